#include "app/Finishing.h"

#include "base/Translation.h"
#include "panel/PanelModel.h"

#include <QEvent>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QThreadPool>
#include <algorithm>
#include <chrono>

namespace quillary {

namespace {

using namespace std::chrono_literals;

const QUrl viewFile(QStringLiteral("qrc:/qt/qml/Quillary/Panel/FinishingView.qml"));
constexpr int narrowest = 300;
/// What takes less than this is not worth a window.
constexpr qint64 worthAWindow = 250; ///< ms

} // namespace

Finishing::Finishing(QQuickWindow& panel, PanelModel& model, QThreadPool& saves, QQmlEngine& engine)
    : m_panel(panel), m_model(model), m_saves(saves), m_engine(engine) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    m_panel.installEventFilter(this);
    m_tick.setInterval(50ms);
    connect(&m_tick, &QTimer::timeout, this, &Finishing::follow);
    connect(&m_model.jobs(), &FileJobs::stopped, this, [this] { m_stopped = true; });
}

Finishing::~Finishing() {
    m_panel.removeEventFilter(this);
}

bool Finishing::eventFilter(QObject* watched, QEvent* event) {
    // The window hears of it first and may refuse.
    if (watched == &m_panel && event->type() == QEvent::Close) {
        m_closed.start();
        m_stopped = m_worked = false;
        m_tick.start();
        QMetaObject::invokeMethod(this, &Finishing::follow, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

bool Finishing::busy() const {
    return m_model.jobs().busy() || !m_saves.waitForDone(0);
}

void Finishing::follow() {
    if (m_panel.isVisible()) return m_tick.stop();
    if (busy()) {
        m_worked = true;
        if (m_closed.elapsed() >= worthAWindow && make()) showProgress();
    } else if (const QStringList& problems = m_model.jobs().problems();
               !m_stopped && m_worked && !problems.isEmpty() && make()) {
        // Somebody has to hear of it.
        m_tick.stop();
        m_view->setProperty("problem", problems.join(u'\n'));
    } else {
        end();
    }
}

bool Finishing::make() {
    if (m_window) return true;
    QQmlComponent component(&m_engine, viewFile);
    std::unique_ptr<QObject> made(component.create());
    m_view = qobject_cast<QQuickItem*>(made.get());
    if (!m_view) {
        qWarning("%s", qPrintable(component.errorString()));
        return false;
    }
    m_window = std::make_unique<QQuickWindow>();
    m_window->setTitle(translate("Finishing", "Quillary is finishing"));
    m_window->setColor(m_panel.color());
    m_window->setFlags(Qt::Dialog);
    made.release()->setParent(m_window.get());
    m_view->setParentItem(m_window->contentItem());
    m_view->setWidth(narrowest);
    const auto fit = [this] {
        const QSize size(narrowest, static_cast<int>(m_view->height()));
        m_window->setMinimumSize(size);
        m_window->setMaximumSize(size);
        m_window->resize(size);
    };
    connect(m_view, &QQuickItem::heightChanged, m_window.get(), fit);
    fit();
    connect(m_view, SIGNAL(stopped()), this, SLOT(stop()));
    connect(m_view, SIGNAL(panelWanted()), this, SLOT(comeBackByHand()));
    connect(m_view, SIGNAL(closed()), this, SLOT(end()));
    showProgress();
    m_window->show();
    return true;
}

void Finishing::showProgress() {
    const FileJobs& jobs = m_model.jobs();
    m_view->setProperty("done", jobs.done());
    m_view->setProperty("total", jobs.total());
    m_view->setProperty("fraction", jobs.fraction());
}

void Finishing::stop() {
    m_model.jobs().stop();
}

void Finishing::end() {
    m_tick.stop();
    QGuiApplication::quit();
}

void Finishing::comeBackByHand() {
    comeBack();
    m_panel.requestActivate();
}

void Finishing::comeBack() {
    m_tick.stop();
    m_view = nullptr;
    // It may be what asks.
    if (m_window) {
        m_window->hide();
        m_window.release()->deleteLater();
    }
    if (!m_panel.isVisible()) m_panel.show();
}

} // namespace quillary
