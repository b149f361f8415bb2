#pragma once

#include <QProcess>
#include <QStringList>
#include <csignal>

namespace quillary::test {

/// Another process, killed at the end of its scope.
class OtherProgram {
public:
    OtherProgram(const char* program, const QStringList& arguments) {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QString::fromLocal8Bit(program), arguments);
        m_process.waitForStarted();
    }
    ~OtherProgram() { stop(); }

    /// Waits for its first line of output.
    bool isReady() { return m_process.canReadLine() || m_process.waitForReadyRead(10000); }
    /// From now on it does nothing, like a program that hangs.
    void suspend() { ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP); }
    void stop() {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

} // namespace quillary::test
