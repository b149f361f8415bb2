#pragma once

#include "platform/FileChooser.h"

#include <QObject>
#include <QVariantMap>

namespace quillary::platform {

/// One question under way at the desktop portal. Deletes itself when it is answered, or its context is gone.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    PortalRequest(QObject* context, FileChooser& otherwise, FileChooser::Question question, FileChooser::Answer answer);

    /// Asks the portal, or the other chooser where there is none.
    void send();

private Q_SLOTS:
    void response(uint code, const QVariantMap& results);

private:
    void askOtherwise();

    FileChooser& m_otherwise;
    FileChooser::Question m_question;
    FileChooser::Answer m_answer;
};

} // namespace quillary::platform
