#pragma once

#include "platform/Clipboard.h"
#include "platform/FileChooser.h"
#include "platform/FileManager.h"
#include "support/FakePasteboard.h"

#include <utility>

namespace quillary::test {

/// A clipboard whose contents a test sets, and which keeps what was put on it.
class FakeClipboard : public platform::Clipboard {
public:
    std::shared_ptr<platform::Pasteboard> contents() override { return board; }
    void offerFiles(const std::vector<std::filesystem::path>& offered, const QByteArray& bytes) override {
        files = offered;
        png = bytes;
    }
    void offerText(const QString& offered) override { text = offered; }

    std::shared_ptr<FakePasteboard> board = std::make_shared<FakePasteboard>();
    std::vector<std::filesystem::path> files;
    QByteArray png;
    QString text;
};

/// A chooser that keeps the question until a test answers it.
class FakeFileChooser : public platform::FileChooser {
public:
    void ask(QObject*, const Question& asked, Answer then) override {
        question = asked;
        m_answer = std::move(then);
    }
    bool asked() const { return m_answer != nullptr; }
    void answer(const std::vector<std::filesystem::path>& picked) { std::exchange(m_answer, nullptr)(picked); }

    Question question;

private:
    Answer m_answer;
};

class FakeFileManager : public platform::FileManager {
public:
    void show(const std::vector<std::filesystem::path>& files) override { shown = files; }

    std::vector<std::filesystem::path> shown;
};

} // namespace quillary::test
