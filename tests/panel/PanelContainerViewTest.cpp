#include "panel/PanelContainerView.h"

#include <QKeyEvent>
#include <gtest/gtest.h>

namespace quillary {

namespace {

constexpr quint32 capsLock = 2; ///< the lock bit of native modifiers

struct Key {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    quint32 native;
    bool pastes;
};

} // namespace

TEST(PanelContainerView, PastesOnTheCommandAlone) {
    const Key keys[] = {
        {Qt::Key_V, Qt::ControlModifier, 0, true},
        {Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier, 0, true},
        {Qt::Key_V, Qt::NoModifier, 0, false},
        {Qt::Key_V, Qt::ShiftModifier, 0, false},
        {Qt::Key_V, Qt::ControlModifier | Qt::AltModifier, 0, false},
        {Qt::Key_V, Qt::ControlModifier | Qt::MetaModifier, 0, false},
        {Qt::Key_V, Qt::ControlModifier, capsLock, false},
        {Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier, capsLock, false},
        {Qt::Key_C, Qt::ControlModifier, 0, false},
    };
    PanelContainerView view;
    int pasted = 0;
    view.onPaste = [&] { ++pasted; };
    for (const Key& key : keys) {
        const int before = pasted;
        const QKeyEvent event(QEvent::KeyPress, key.key, key.modifiers, 0, 0, key.native);
        EXPECT_EQ(view.performKeyEquivalent(event), key.pastes);
        EXPECT_EQ(pasted - before, key.pastes ? 1 : 0);
    }
    view.onPaste = nullptr;
    EXPECT_TRUE(view.performKeyEquivalent(QKeyEvent(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier)))
        << "the key is swallowed also when nobody listens";
}

} // namespace quillary
