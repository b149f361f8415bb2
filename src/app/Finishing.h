#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>

class QQmlEngine;
class QQuickItem;
class QQuickWindow;
class QThreadPool;

namespace quillary {

class PanelModel;

/// What becomes of the program when the panel's window is closed: it ends, at once where nothing is under way. Else it
/// stays until everything that was asked for is done, behind a small window that tells how far it is and has a "Stop".
/// What could not be done is told there before the program ends.
///
/// Main thread; the window is hidden meanwhile, and `comeBack` shows it again.
class Finishing : public QObject {
    Q_OBJECT

public:
    /// All outlive this. `saves` is the pool of what must not be lost.
    Finishing(QQuickWindow& panel, PanelModel& model, QThreadPool& saves, QQmlEngine& engine);
    ~Finishing() override;

    /// The panel is wanted again: its window is shown, the small one goes.
    void comeBack();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private Q_SLOTS:
    void comeBackByHand();
    void stop();
    void end();

private:
    void follow();
    bool busy() const;
    void showProgress();
    bool make();

    QQuickWindow& m_panel;
    PanelModel& m_model;
    QThreadPool& m_saves;
    QQmlEngine& m_engine;
    QTimer m_tick;
    QElapsedTimer m_closed;
    bool m_worked = false;  ///< since it was closed
    bool m_stopped = false; ///< the next start tells what is missing
    std::unique_ptr<QQuickWindow> m_window; ///< the small one
    QQuickItem* m_view = nullptr;           ///< in it
};

} // namespace quillary
