#pragma once

#include "panel/PanelModel.h"

#include <QThread>

namespace quillary {

/// Every property of the model is written through this one, on the main thread.
template <typename T>
void PanelModel::write(T& property, T value, Observers observers) {
    Q_ASSERT(QThread::currentThread() == thread());
    property = std::move(value);
    Q_EMIT(this->*observers)();
}

} // namespace quillary
