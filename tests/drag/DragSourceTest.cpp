#include "drag/DragSourceNSView.h"

#include <QMouseEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

Q_IMPORT_QML_PLUGIN(Quillary_DragPlugin)

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
            return m_file;
        };
        m_window.show();
        QCoreApplication::processEvents();
    }

    void send(QEvent::Type type, QPointF at, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = {}) {
        if (type == QEvent::MouseButtonPress) m_buttons |= button;
        if (type == QEvent::MouseButtonRelease) m_buttons &= ~Qt::MouseButtons(button);
        QMouseEvent event(type, at, at, m_window.mapToGlobal(at), type == QEvent::MouseMove ? Qt::NoButton : button,
                          m_buttons, modifiers);
        QCoreApplication::sendEvent(&m_window, &event);
    }
    void press(QPointF at, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {}) {
        send(QEvent::MouseButtonPress, at, button, modifiers);
    }
    void move(QPointF to) {
        send(QEvent::MouseMove, to);
        QCoreApplication::processEvents();
    }
    void release(QPointF at, Qt::MouseButton button = Qt::LeftButton) { send(QEvent::MouseButtonRelease, at, button); }

    QQuickWindow m_window;
    Beneath m_beneath{m_window.contentItem()};
    DragSourceNSView m_source{m_window.contentItem()};
    QSignalSpy m_taps{&m_source, &DragSourceNSView::tapped};
    QSignalSpy m_dragging{&m_source, &DragSourceNSView::draggingChanged};
    std::optional<std::filesystem::path> m_file;
    int m_asked = 0;
    Qt::MouseButtons m_buttons;
};

} // namespace

TEST_F(DragSource, TakesAShortPressForATap) {
    press({50, 50});
    move({54, 50});
    release({54, 50});
    EXPECT_EQ(m_taps.size(), 1);
    EXPECT_EQ(m_asked, 0);
    EXPECT_EQ(m_beneath.presses, 0);
}

TEST_F(DragSource, AsksAgainWhileThereIsNoFile) {
    press({50, 50});
    move({60, 50});
    move({61, 50});
    release({61, 50});
    EXPECT_EQ(m_asked, 2);
    EXPECT_EQ(m_taps.size(), 1) << "the press stayed alive";
    EXPECT_TRUE(m_dragging.isEmpty());
}

TEST_F(DragSource, IsReadyForTheNextPressAfterADrag) {
    m_file = "/pictures/a.png";
    for (int drag = 1; drag <= 2; ++drag) {
        press({50, 50});
        move({60, 50});
        EXPECT_EQ(m_dragging.size(), 2 * drag) << "begun and ended";
        EXPECT_FALSE(m_source.dragging());
        EXPECT_FALSE(m_window.mouseGrabberItem());
        move({70, 50});
        EXPECT_EQ(m_asked, drag) << "once for each drag";
        release({70, 50});
    }
    EXPECT_TRUE(m_taps.isEmpty());
    m_file.reset();
    press({50, 50});
    release({50, 50});
    EXPECT_EQ(m_taps.size(), 1);
}

TEST_F(DragSource, DoesNotBeginOnceTheButtonIsUp) {
    m_file = "/pictures/a.png";
    press({50, 50});
    send(QEvent::MouseMove, {60, 50});
    EXPECT_TRUE(m_source.dragging());
    release({60, 50});
    EXPECT_FALSE(m_source.dragging());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_dragging.size(), 2);
    EXPECT_TRUE(m_taps.isEmpty());
}

TEST_F(DragSource, LeavesMenusToWhatLiesBeneath) {
    press({50, 50}, Qt::RightButton);
    release({50, 50}, Qt::RightButton);
    press({50, 50}, Qt::LeftButton, Qt::ControlModifier);
    move({90, 50});
    release({90, 50});
    EXPECT_EQ(m_beneath.presses, 2);
    EXPECT_EQ(m_asked, 0);
    EXPECT_TRUE(m_taps.isEmpty());
}

TEST_F(DragSource, TellsWhereThePointerIs) {
    QSignalSpy hovered(&m_source, &DragSourceNSView::hovered);
    QSignalSpy ended(&m_source, &DragSourceNSView::hoverEnded);
    move({50, 50});
    ASSERT_FALSE(hovered.isEmpty());
    EXPECT_DOUBLE_EQ(hovered.last().first().toDouble(), 0.25);
    m_source.setOpenHandCursor(true);
    EXPECT_EQ(m_source.cursor().shape(), Qt::OpenHandCursor);
    m_source.setOpenHandCursor(false);
    m_source.setX(100);
    move({20, 50});
    EXPECT_EQ(ended.size(), 1);
}

TEST_F(DragSource, AnswersInQml) {
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQuick
        import Quillary.Drag
        FileDragSource {
            property int taps: 0
            property int asked: 0
            width: 200; height: 100
            title: "A picture"
            picture: shape
            onUrlRequested: request => { ++asked; request.url = "file:///pictures/a%20b.png" }
            onTapped: ++taps
            Rectangle { id: shape; anchors.fill: parent; color: "red" }
            PanelDropTarget { anchors.fill: parent }
        }
    )",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    ASSERT_TRUE(object) << qPrintable(component.errorString());
    auto* source = qobject_cast<DragSourceNSView*>(object.get());
    source->setParentItem(m_window.contentItem());
    press({50, 50});
    move({60, 50});
    release({60, 50});
    press({50, 50});
    release({50, 50});
    EXPECT_EQ(source->property("asked").toInt(), 1);
    EXPECT_EQ(source->property("taps").toInt(), 1);
}
