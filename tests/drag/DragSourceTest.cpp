#include "drag/DragSourceNSView.h"

#include <QMouseEvent>
#include <QQuickWindow>
#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace quillary;

namespace {

/// A window with a drag source that fills it, above an item that counts the presses which fall through.
class DragSource : public testing::Test {
protected:
    class Beneath : public QQuickItem {
    public:
        int presses = 0;
        explicit Beneath(QQuickItem* parent) : QQuickItem(parent) { setAcceptedMouseButtons(Qt::AllButtons); }
        void mousePressEvent(QMouseEvent*) override { ++presses; }
    };

    DragSource() {
        m_window.resize(200, 100);
        for (QQuickItem* item : {static_cast<QQuickItem*>(&m_beneath), static_cast<QQuickItem*>(&m_source)})
            item->setSize({200, 100});
        m_source.url = [this] {
            ++m_asked;
            return std::filesystem::path("/pictures/a.png");
        };
        m_window.show();
        QCoreApplication::processEvents();
    }
    /// Presses, moves beyond the threshold and releases, before any event is served.
    void dragAtOnce(Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {}) {
        for (const auto& [type, x] :
             {std::pair{QEvent::MouseButtonPress, 50}, {QEvent::MouseMove, 60}, {QEvent::MouseButtonRelease, 60}}) {
            const QPointF at(x, 50);
            QMouseEvent event(type, at, at, m_window.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button,
                              type == QEvent::MouseButtonRelease ? Qt::NoButton : button, modifiers);
            QCoreApplication::sendEvent(&m_window, &event);
            if (type == QEvent::MouseMove) m_begun = m_source.dragging();
        }
    }

    QQuickWindow m_window;
    Beneath m_beneath{m_window.contentItem()};
    DragSourceNSView m_source{m_window.contentItem()};
    QSignalSpy m_taps{&m_source, &DragSourceNSView::tapped};
    int m_asked = 0;
    bool m_begun = false;
};

} // namespace

TEST_F(DragSource, DoesNotBeginOnceTheButtonIsUp) {
    QSignalSpy dragging(&m_source, &DragSourceNSView::draggingChanged);
    dragAtOnce(Qt::LeftButton);
    EXPECT_TRUE(m_begun);
    EXPECT_FALSE(m_source.dragging());
    QCoreApplication::processEvents();
    EXPECT_EQ(dragging.size(), 2);
    EXPECT_TRUE(m_taps.isEmpty());
}

TEST_F(DragSource, LeavesMenusToWhatLiesBeneath) {
    dragAtOnce(Qt::RightButton);
    dragAtOnce(Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(m_beneath.presses, 2);
    EXPECT_EQ(m_asked, 0);
    EXPECT_TRUE(m_taps.isEmpty());
}
