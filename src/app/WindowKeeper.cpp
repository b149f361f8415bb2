#include "app/WindowKeeper.h"

#include "app/EnumWords.h"
#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "platform/SettingsStore.h"
#include "platform/WindowManners.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cstdio>

namespace quillary {

namespace {

const QString frameKey = QStringLiteral("windowFrame");
const QString tabKey = QStringLiteral("lastTab");
const QString shelfKey = QStringLiteral("lastShelf");

QString textOf(const QRect& frame) {
    return QStringLiteral("%1,%2 %3x%4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
}

/// Null for anything else.
QRect frameOf(const QString& text) {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    if (std::sscanf(text.toLatin1().constData(), "%d,%d %dx%d", &x, &y, &width, &height) != 4) return {};
    return {x, y, width, height};
}

int area(const QRect& rect) {
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

} // namespace

QRect placeOn(const QList<QRect>& screens, const QRect& before) {
    if (before.isEmpty()) return {};
    const auto shared = [&](const QRect& screen) { return area(screen & before); };
    const auto best = std::ranges::max_element(screens, {}, shared);
    if (best == screens.end() || shared(*best) == 0) return {};
    QRect place(before.topLeft(), before.size().boundedTo(best->size()));
    place.moveLeft(std::clamp(place.left(), best->left(), best->right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), best->top(), best->bottom() + 1 - place.height()));
    return place;
}

WindowKeeper::WindowKeeper(QWindow& window, PanelModel& model, AppSettings& settings)
    : m_window(window), m_model(model), m_settings(settings) {
    restore();
    stayAbove();
    connect(model.settings(), &SettingsModel::keepAboveChanged, this, &WindowKeeper::stayAbove);
    window.installEventFilter(this);
}

void WindowKeeper::restore() {
    const auto text = [this](const QString& key) { return m_settings.store().value(key).toString(); };
    if (const auto shelf = valueOf<PanelModel::LibraryKind>(text(shelfKey))) m_model.setLibraryKind(*shelf);
    if (const auto tab = valueOf<PanelModel::Tab>(text(tabKey)); tab && !m_settings.openOnLibrary())
        m_model.setTab(*tab);

    const QRect before = frameOf(text(frameKey));
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) screens += screen->availableGeometry();
    if (const QRect place = placeOn(screens, before); !place.isEmpty()) {
        m_window.resize(place.size().expandedTo(m_window.minimumSize()));
        if (platform::placesWindows()) m_window.setFramePosition(place.topLeft());
    } else if (const QScreen* screen = m_window.screen(); screen && !before.isEmpty()) {
        m_window.resize(before.size().boundedTo(screen->availableSize()).expandedTo(m_window.minimumSize()));
    }
}

void WindowKeeper::store() {
    auto& store = m_settings.store();
    store.setValue(tabKey, wordOf(m_model.tab()));
    store.setValue(shelfKey, wordOf(m_model.libraryKind()));
    // As large as the screen it has no size of its own.
    if (m_window.windowStates() == Qt::WindowNoState)
        store.setValue(frameKey, textOf({m_window.framePosition(), m_window.size()}));
}

void WindowKeeper::stayAbove() {
    if (platform::keepsWindowsAbove()) m_window.setFlag(Qt::WindowStaysOnTopHint, m_settings.keepAbove());
}

bool WindowKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) store();
    return QObject::eventFilter(watched, event);
}

} // namespace quillary
