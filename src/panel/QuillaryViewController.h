#pragma once

#include "panel/PanelContainerView.h"
#include "panel/PanelModel.h"
#include "panel/TextPaste.h"

#include <QObject>
#include <QPointer>
#include <QQmlComponent>
#include <QVariantAnimation>
#include <memory>

class QQmlEngine;

namespace quillary {

namespace platform {
class Clipboard;
class Desktop;
} // namespace platform

/// Owns the one model and builds the panel's view tree. The host, or a window of our own, gives the view a parent item
/// that it fills, and tells when it is shown. Main thread.
class QuillaryViewController : public QObject {
    Q_OBJECT

public:
    static constexpr QSizeF initialSize{380, 460};

    QuillaryViewController(const PanelModel::Collaborators& with, const platform::Desktop& desktop,
                           QObject* parent = nullptr);
    ~QuillaryViewController() override;

    PanelModel& model() { return m_model; }

    /// Builds the container with the root view, invisible, from the QML document at `rootView`, which has the required
    /// property `model`, the properties `dark`, `reducedMotion` and `keepsWindowsAbove`, and holds the panel's drop target. Null,
    /// with the reasons on the log, when the document cannot be made.
    PanelContainerView* loadView(QQmlEngine& engine, const QUrl& rootView);
    PanelContainerView* view() const { return m_view.get(); }

    /// The parent item has a new size, or the view a new parent: fills it and fades in.
    void viewDidLayout();
    /// The panel is shown: fades in and brings the shelves up to date.
    void viewDidAppear();
    bool revealed() const { return m_revealed; }

private:
    void reveal();
    void fadeIn();
    /// Hands the desktop's manners to the root view.
    void followManners();

    PanelModel m_model;
    const platform::Desktop& m_desktop;
    platform::Clipboard& m_clipboard;
    TextPaste m_textPaste;
    std::unique_ptr<PanelContainerView> m_view;
    QQuickItem* m_hosting = nullptr;
    QPointer<QVariantAnimation> m_fade;
    bool m_revealed = false;
};

} // namespace quillary
