#include "panel/PanelModel.h"
#include "panel/PanelModelWriting.h"

namespace quillary {

void PanelModel::setEdgeRefine(double amount) {
    write(m_edgeRefine, amount, &PanelModel::edgeRefineChanged);
}

void PanelModel::setShowCutout(bool on) {
    setStaged({});
    write(m_showCutout, on, &PanelModel::displayImageChanged);
    prepareExport();
}

void PanelModel::resetCutout() {
    m_refineTask.cancel();
    m_rawCutout = {};
    m_cutout = {};
    m_cutoutMethod = {};
    setStaged({});
    write(m_cutoutState, CutoutState(CutoutProgress::none), &PanelModel::cutoutStateChanged);
    write(m_showCutout, false, &PanelModel::displayImageChanged);
}

PanelModel::CutoutProgress PanelModel::cutoutProgress() const {
    if (std::holds_alternative<CutoutFailed>(m_cutoutState)) return CutoutProgress::failed;
    return std::get<CutoutProgress>(m_cutoutState);
}

} // namespace quillary
