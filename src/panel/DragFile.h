#pragma once

#include "base/Background.h"
#include "library/Storage.h"

#include <QObject>
#include <chrono>
#include <expected>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace quillary {

/// The file that the next drag carries. It is made in the background as soon as there is a picture, and gets its name
/// last: idle → encoding → ready → named. `prepare` and `discard` make void what was prepared before.
///
/// Nobody waits for it when a drag begins: what the drag carries is asked for later, by `offer`, and belongs to the
/// picture of the drag's first moment. Whatever is prepared or discarded afterwards, that file is finished, and named
/// as soon as it is whole. Main thread.
class DragFile : public QObject {
    Q_OBJECT

public:
    enum class State { idle, encoding, ready, named };
    using Made = std::expected<Storage::Prepared, StorageError>;
    /// Runs in the background. Its stop request means that nobody wants the file any more.
    using Maker = std::function<Made(std::stop_token)>;
    /// Hears of every file that was made, with its place while it has no name, also of one that was discarded
    /// meanwhile; the place is empty when it could not be made. A maker with a listener is not stopped.
    using Listener = std::function<void(const std::filesystem::path& readable)>;
    using Files = std::function<std::vector<std::filesystem::path>()>;

    /// Both outlive this object.
    DragFile(Storage& storage, QThreadPool& work, QObject* parent = nullptr);
    ~DragFile() override;

    State state() const;
    /// The file, once it is named.
    std::optional<std::filesystem::path> file() const;

    void prepare(Maker make, Listener listener = {});
    void discard();
    /// Takes what was prepared out, to be brought back later as it will be then; null while idle.
    struct Job;
    using Aside = std::shared_ptr<Job>;
    Aside setAside();
    void bringBack(Aside job);

    // What follows is for a file that was prepared; without one nothing happens. One that could not be made, or is gone
    // by now, is made again.

    /// For a drag that begins now: the file, waited for in an event loop of its own, which paints and hears on, at most
    /// for `longestWait`. Empty when it cannot be had; `failed` has told why then. May be called at any time, also when
    /// this object is gone.
    Files offer();
    /// Calls `then` with the file once it is named: at once, or in a later turn of the event loop, or never.
    void whenNamed(std::function<void(const std::filesystem::path&)> then);

    static constexpr std::chrono::seconds longestWait{30};

Q_SIGNALS:
    /// `file` is another one, or none.
    void fileChanged();
    /// A file was given its name.
    void named(const std::filesystem::path& file);
    /// A file that was asked for cannot be had: a text for the user.
    void failed(const QString& why);

private:
    using SharedJob = Aside;
    void start(const SharedJob& job, Listener listener);
    void finish(const SharedJob& job, Made made);
    void want(const SharedJob& job);
    void name(const SharedJob& job);
    void settle(const SharedJob& job);
    std::vector<std::filesystem::path> wait(const SharedJob& job);

    Storage& m_storage;
    Background m_making;
    SharedJob m_job;                 ///< null while idle
    std::vector<SharedJob> m_wanted; ///< those that are named as soon as they are whole, whatever `m_job` is by then
};

} // namespace quillary
