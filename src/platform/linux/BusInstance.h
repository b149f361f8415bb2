#pragma once

#include "platform/Instance.h"

#include <QVariantMap>
#include <functional>

namespace quillary::platform {

/// The face that the session's bus sees of the panel: the desktop's common interface of applications.
class BusApplication : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    using Taker = std::function<void(const StartRequest&)>;
    explicit BusApplication(Taker take) : m_take(std::move(take)) {}

public Q_SLOTS:
    void Activate(const QVariantMap& details);
    void Open(const QStringList& urls, const QVariantMap& details);
    void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& details);

private:
    Taker m_take;
};

/// The name on the session's bus is the claim.
class BusInstance final : public Instance {
    Q_OBJECT

public:
    BusInstance();
    ~BusInstance() override;
    bool claim() override;
    bool handOver(const StartRequest& request) override;
    void release() override;

private:
    BusApplication m_application;
    bool m_claimed = false;
};

} // namespace quillary::platform
