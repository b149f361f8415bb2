#pragma once

#include "cutout/TouchUp.h"

#include <QObject>
#include <QtQml/qqml.h>

namespace quillary {

/// Which touches follow a cut-out. All are off when the panel begins; they stay as set for the next cut-outs. Main
/// thread.
class TouchUpModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("reached through the panel's model")
    Q_PROPERTY(bool cleanEdge READ cleanEdge WRITE setCleanEdge NOTIFY changed FINAL)
    Q_PROPERTY(bool enclosed READ enclosed WRITE setEnclosed NOTIFY changed FINAL)
    Q_PROPERTY(bool trim READ trim WRITE setTrim NOTIFY changed FINAL)

public:
    using QObject::QObject;

    TouchUp::Options options() const { return m_options; }
    bool cleanEdge() const { return m_options.cleanEdge; }
    bool enclosed() const { return m_options.enclosed; }
    bool trim() const { return m_options.trim; }
    void setCleanEdge(bool on) { set(&TouchUp::Options::cleanEdge, on); }
    void setEnclosed(bool on) { set(&TouchUp::Options::enclosed, on); }
    void setTrim(bool on) { set(&TouchUp::Options::trim, on); }

Q_SIGNALS:
    void changed();

private:
    void set(bool TouchUp::Options::*option, bool on) {
        if (m_options.*option == on) return;
        m_options.*option = on;
        Q_EMIT changed();
    }

    TouchUp::Options m_options;
};

} // namespace quillary
