#pragma once

#include <QObject>
#include <memory>
#include <vector>

namespace quillary::platform {

/// What a start of the program asks of the panel that is there already.
struct StartRequest {
    std::vector<QString> urls;    ///< taken as if dropped; may be empty
    QString tab = {};             ///< by the words of the command line; empty leaves it as it is
    QString shelf = {};           ///< likewise
    QString activationToken = {}; ///< the desktop's permission to take the focus; empty when it gave none
};

/// Keeps the panel single: the first start of a session claims the program's name, later ones hand their request to it.
/// Main thread, with an application object.
///
///     auto instance = platform::systemInstance();
///     if (!instance->claim() && instance->handOver(request)) return 0;
class Instance : public QObject {
    Q_OBJECT

public:
    /// True when this process is the session's panel from now on, or nobody can tell (a session without a bus).
    virtual bool claim() = 0;
    /// True when the running panel took the request over. It is given ten seconds.
    virtual bool handOver(const StartRequest& request) = 0;
    /// The claim is given up: the next start can be the panel.
    virtual void release() = 0;

Q_SIGNALS:
    /// Another start, or the desktop, asks the claimed panel for something.
    void requested(const quillary::platform::StartRequest& request);
};

std::unique_ptr<Instance> systemInstance();

} // namespace quillary::platform
