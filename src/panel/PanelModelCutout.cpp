#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "panel/PanelModelWriting.h"

#include <cmath>

namespace quillary {

namespace {

constexpr double leastChange = 0.001; ///< of the edge that is worth a new refinement

Cutout::Method engineOf(PanelModel::CutoutMethod method) {
    return method == PanelModel::CutoutMethod::solid ? Cutout::Method::solid : Cutout::Method::subject;
}

PanelModel::CutoutMethod methodOf(Cutout::Method engine) {
    return engine == Cutout::Method::solid ? PanelModel::CutoutMethod::solid : PanelModel::CutoutMethod::subject;
}

} // namespace

QString PanelModel::label(CutoutMethod method) {
    return Cutout::label(engineOf(method));
}

void PanelModel::removeBackground() {
    startRemoval({});
}

void PanelModel::removeBackground(CutoutMethod method) {
    startRemoval(engineOf(method));
}

void PanelModel::startRemoval(std::optional<Cutout::Method> method) {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image || staging()) return;
    m_cutoutNote.clear();
    setCutoutState(CutoutProgress::working);
    m_removal.run([picture = image->image, method, model = m_settings.subjectModel()](
                      std::stop_token stop) { return Cutout::remove(picture, method, model, std::move(stop)); },
                  [this](Cutout::Expected removed) { finishRemoval(std::move(removed)); });
}

void PanelModel::finishRemoval(Cutout::Expected removed) {
    if (!removed) {
        setCutoutState(CutoutFailed{removed.error().description(), removed.error().recoverySuggestion()});
        return;
    }
    m_cutoutMethod = methodOf(removed->method);
    m_cutoutNote = removed->note;
    m_edgeBase = {};
    write(m_rawCutout, std::move(removed->image), &PanelModel::rawCutoutChanged);
    scheduleRefine();
}

void PanelModel::stopRemoval() {
    if (!m_removal.busy()) return;
    m_removal.cancel();
    setCutoutState(hasCutout() ? CutoutProgress::ready : CutoutProgress::none);
}

std::function<PanelModel::Refined(std::stop_token)> PanelModel::refinement() const {
    const TouchUp::Options options = m_touchUp.options();
    const auto* image = std::get_if<PastedImage>(&m_state);
    const bool enclosed = options.enclosed && m_cutoutMethod == CutoutMethod::solid;
    return [raw = m_rawCutout, known = enclosed ? m_edgeBase : QImage(), picture = image ? image->image : QImage(),
            amount = m_edgeRefine, enclosed, options](const std::stop_token& stop) -> Refined {
        QImage base = known;
        if (enclosed && base.isNull()) base = TouchUp::base(picture, raw, Cutout::Method::solid, options, stop);
        return {base, TouchUp::finish(picture, base.isNull() ? raw : base, amount, options, stop)};
    };
}

void PanelModel::scheduleRefine() {
    if (m_rawCutout.isNull()) return;
    m_dragFile.discard();
    m_refineTask.run(refinement(), [this](const Refined& refined) { setCutout(refined); });
    Q_EMIT refiningChanged();
}

void PanelModel::setCutout(const Refined& refined) {
    m_cutout = refined.touched.image;
    m_cutoutFrame = refined.touched.frame;
    if (refined.base.cacheKey() != m_edgeBase.cacheKey())
        write(m_edgeBase, refined.base, &PanelModel::rawCutoutChanged);
    // The first refinement after a removal ends it. A removal that began meanwhile goes on.
    const bool removed = cutoutProgress() == CutoutProgress::working && !m_removal.busy();
    write(m_showCutout, removed || m_showCutout, &PanelModel::displayImageChanged);
    if (removed) setCutoutState(CutoutProgress::ready);
    Q_EMIT refiningChanged();
    // A drag that began meanwhile has refined it for itself.
    if (removed || m_dragFile.state() == DragFile::State::idle) prepareExport();
}

void PanelModel::setCutoutState(CutoutState state) {
    write(m_cutoutState, std::move(state), &PanelModel::cutoutStateChanged);
}

void PanelModel::setEdgeRefine(double amount) {
    const bool differs = std::abs(amount - m_edgeRefine) > leastChange;
    write(m_edgeRefine, amount, &PanelModel::edgeRefineChanged);
    if (differs) scheduleRefine();
}

void PanelModel::setShowCutout(bool on) {
    write(m_showCutout, on, &PanelModel::displayImageChanged);
    prepareExport();
}

void PanelModel::resetCutout() {
    m_removal.cancel();
    m_refineTask.cancel();
    m_cutout = {};
    m_cutoutMethod = {};
    m_cutoutNote.clear();
    m_dragFile.discard();
    m_edgeBase = {};
    write(m_rawCutout, {}, &PanelModel::rawCutoutChanged);
    setCutoutState(CutoutProgress::none);
    write(m_showCutout, false, &PanelModel::displayImageChanged);
    Q_EMIT refiningChanged();
}

QRectF PanelModel::cutoutFrame() const {
    const QSizeF whole = m_rawCutout.size();
    if (m_cutoutFrame.isEmpty() || whole.isEmpty()) return {0, 0, 1, 1};
    return {m_cutoutFrame.x() / whole.width(), m_cutoutFrame.y() / whole.height(),
            m_cutoutFrame.width() / whole.width(), m_cutoutFrame.height() / whole.height()};
}

PanelModel::CutoutProgress PanelModel::cutoutProgress() const {
    if (std::holds_alternative<CutoutFailed>(m_cutoutState)) return CutoutProgress::failed;
    return std::get<CutoutProgress>(m_cutoutState);
}

QString PanelModel::cutoutFailure() const {
    const auto* failed = std::get_if<CutoutFailed>(&m_cutoutState);
    return failed ? failed->message : QString();
}

QString PanelModel::cutoutSuggestion() const {
    const auto* failed = std::get_if<CutoutFailed>(&m_cutoutState);
    return failed ? failed->suggestion.value_or(QString()) : QString();
}

} // namespace quillary
