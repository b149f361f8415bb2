#pragma once

#include "panel/PanelModel.h"

#include <QThread>

namespace quillary {

/// Every property of the model is written through these two, on the main thread.

template <typename T>
void PanelModel::write(T& property, T value, Observers observers) {
    Q_ASSERT(QThread::currentThread() == thread());
    property = std::move(value);
    Q_EMIT(this->*observers)();
}

template <typename T>
void PanelModel::writeIfDifferent(T& property, T value, Observers observers) {
    if (property != value) write(property, std::move(value), observers);
}

} // namespace quillary
