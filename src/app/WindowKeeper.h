#pragma once

#include <QObject>
#include <QRect>

class QWindow;

namespace quillary {

class AppSettings;
class PanelModel;

/// Where a window that stood there is to stand now: as large as it was where the screen has room for that, and wholly on
/// the one of these screens that holds most of it. Null for a place on none of them, or without a size.
QRect placeOn(const QList<QRect>& screens, const QRect& before);

/// Keeps the panel's size, place, tab and shelf from one start to the next, and the window above others while the user
/// wants that; each where the window system allows it. The tab stays the one that the model chose when the user wants to
/// begin on the Library. Main thread.
class WindowKeeper : public QObject {
public:
    /// Restores at once; the window is not shown yet. All outlive this.
    WindowKeeper(QWindow& window, PanelModel& model, AppSettings& settings);

    /// Stores what holds now; also done when the window is closed.
    void store();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();
    void stayAbove();

    QWindow& m_window;
    PanelModel& m_model;
    AppSettings& m_settings;
};

} // namespace quillary
