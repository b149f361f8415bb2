#pragma once

#include "panel/PanelModel.h"

#include <QColor>
#include <QElapsedTimer>
#include <QPoint>
#include <QProcess>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class QQuickItem;
class QQuickWindow;

namespace quillary::benchmark {

/// Milliseconds.
struct Span {
    double wall = 0;
    double processor = 0; ///< of the main thread
};

/// The time since it was made.
class Watch {
public:
    Watch();
    Span elapsed() const;

private:
    QElapsedTimer m_wall;
    double m_processor;
};

/// The longest stretch in which the main thread's event loop did not turn, since it was made: by the clock, and by the
/// processor time of that thread.
class Blocked {
public:
    Blocked();
    Span longest() const;

private:
    void turn();

    QTimer m_tick;
    Watch m_since;
    Span m_longest;
};

/// The panel in its window, driven by keys and the pointer, and the other programs around it. Keeps what was measured
/// and prints it.
class Driver {
public:
    /// Runs the panel on the library in `folder`, with settings and caches of its own there, and `work` once it stands on
    /// the screen. Returns the exit status.
    static int run(int argc, char** argv, const std::filesystem::path& folder,
                   const std::function<void(Driver&)>& work);

    Driver(QQuickWindow& window, PanelModel& model);
    ~Driver();

    PanelModel& model() { return m_model; }

    /// Runs the event loop, without spinning, until the condition holds; false when it does not within 20 s.
    bool comesTrue(const std::function<bool()>& condition);
    /// Until what was asked for before is done and the processor rests.
    void settle();
    void nextFrame();
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Gives the keyboard to the tiles, or to the search field, of the shelf that is shown.
    void focusTiles();
    void focusSearch();

    // Places on the screen.
    QPoint middleOfStage() const;
    /// Within the staged picture, near its corner.
    QPoint edgeOfStage() const;
    /// Waits until the pixel at one of those places is as wanted, looked at after each frame.
    bool screenBecomes(QPoint (Driver::*where)() const, const std::function<bool(QColor)>& wanted);

    /// Another program offers this, "TYPE=FILE", on the clipboard.
    void ownClipboard(const QString& offer);
    struct Drop {
        Span mainThread;  ///< the longest stretch from the press to the drop
        Span fromRelease; ///< until the other program had the file
    };
    /// Drags what lies there into another program's window.
    Drop dragOut(QPoint from);

    bool hearsSound() const { return m_recorder.state() == QProcess::Running; }
    void silence();
    void waitForSound();

    void note(const std::string& what, Span span, const char* detail = "");
    void note(const std::string& what, const Watch& watch) { note(what, watch.elapsed()); }
    void print() const;

private:
    QQuickItem& view() const;
    QQuickItem* part(const char* name) const;

    QQuickWindow& m_window;
    PanelModel& m_model;
    std::unique_ptr<QProcess> m_owner;
    QProcess m_target;
    QProcess m_recorder;
    std::vector<std::string> m_order;
    std::map<std::string, std::vector<double>> m_noted;
};

} // namespace quillary::benchmark
