#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "panel/PanelModelWriting.h"
#include "panel/StagedBefore.h"
#include "platform/Clipboard.h"
#include "platform/KeptFile.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

QString withoutSlashes(QString name) {
    name.replace(u'/', u'-').replace(u':', u'-');
    return name.trimmed();
}

QString urlOf(const fs::path& file) {
    return QString::fromLatin1(fileUrl(file));
}

using Note = std::expected<QString, QString>;

Note saveNote(const std::expected<fs::path, StorageError>& written, bool cutout) {
    if (!written) return std::unexpected(written.error().description());
    return cutout ? translate("Panel", "Cutout saved to your library") : translate("Panel", "Saved to your library");
}

/// The same beside another image.
Note saveNoteOf(const QString& name, const std::expected<fs::path, StorageError>& written) {
    if (written) return translate("Panel", "“%1” saved to your library").arg(shownStem(*written));
    return std::unexpected(translate("Panel", "“%1” was not saved. %2").arg(name, written.error().description()));
}

PanelModel::State stateOf(std::expected<PastedImage, ImageIntakeError> image) {
    if (image) return *std::move(image);
    const QString message = image.error().description();
    return PanelModel::Failed{message.isEmpty() ? translate("Panel", "Could not read that image.") : message,
                              image.error().recoverySuggestion()};
}

} // namespace

PanelModel::Stage PanelModel::stage() const {
    if (std::holds_alternative<PastedImage>(m_state)) return Stage::loaded;
    return std::holds_alternative<Failed>(m_state) ? Stage::failed : Stage::empty;
}

void PanelModel::setState(State state) {
    write(m_state, std::move(state), &PanelModel::stateChanged);
    Q_EMIT displayImageChanged();
}

void PanelModel::fail(const QString& message, const std::optional<QString>& hint) {
    Q_EMIT nameWanted();
    keepBefore();
    ++m_turn;
    m_staging.cancel();
    resetCutout();
    setState(Failed{message, hint});
    Q_EMIT stagingChanged();
    setStagedUnseen(m_tab == Tab::library);
    prepareExport();
}

void PanelModel::keepBefore() {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image || m_before) return;
    m_before = std::make_unique<StagedBefore>(*image, m_cutout, m_rawCutout, m_edgeBase, m_cutoutFrame, m_cutoutMethod,
                                              m_cutoutNote, m_showCutout, refining(), m_dragFile.setAside());
}

void PanelModel::goBack() {
    if (!m_before || stage() != Stage::failed) return;
    const auto before = std::exchange(m_before, nullptr);
    m_staging.cancel();
    m_cutout = before->cutout;
    m_cutoutFrame = before->cutoutFrame;
    m_cutoutMethod = before->cutoutMethod;
    m_cutoutNote = before->cutoutNote;
    m_edgeBase = before->edgeBase;
    m_showCutout = before->showCutout;
    write(m_rawCutout, before->rawCutout, &PanelModel::rawCutoutChanged);
    setState(before->image);
    setCutoutState(hasCutout() ? CutoutProgress::ready : CutoutProgress::none);
    Q_EMIT stagingChanged();
    m_dragFile.bringBack(before->file);
    if (before->refining)
        scheduleRefine();
    else if (m_dragFile.state() == DragFile::State::idle)
        prepareExport();
}

QString PanelModel::nameBefore() const {
    return m_before && stage() == Stage::failed ? m_before->image.name : QString();
}

void PanelModel::setStagedUnseen(bool unseen) {
    if (unseen != m_stagedUnseen) write(m_stagedUnseen, unseen, &PanelModel::stagedUnseenChanged);
}

void PanelModel::handlePaste() {
    const bool blocks = m_tab == Tab::library && m_libraryKind == LibraryKind::blocks;
    // With a block selected the pasted picture is its poster, never a new staged image.
    if (blocks && m_blocksShelf.hasSelectedBlock())
        m_blocksShelf.pastePoster();
    else
        paste();
}

void PanelModel::load(const Maker& make, Origin origin) {
    Q_EMIT nameWanted();
    keepBefore();
    setStagedUnseen(false);
    ++m_turn;
    m_imagesShelf.setNote(std::nullopt);
    m_importQueue.dismiss();
    resetCutout();
    m_staging.run(make, [this, origin](State next) {
        if (std::holds_alternative<PastedImage>(next)) m_before.reset();
        setState(std::move(next));
        setStagedUnseen(m_tab == Tab::library);
        m_unrecorded = origin == Origin::outside && stage() == Stage::loaded;
        Q_EMIT stagingChanged();
        prepareExport();
    });
    Q_EMIT stagingChanged();
}

void PanelModel::paste() {
    load([contents = m_clipboard.contents(), longEdge = m_settings.vectorLongEdge()](std::stop_token stop) -> State {
        if (FCPXMLPasteboard::holdsFinalCutClips(*contents))
            return Failed{translate("Panel", "Final Cut clips can’t be pasted"),
                          translate("Panel", "Drag the compound clip from the browser instead.")};
        return stateOf(ImageIntake::read(*contents, longEdge, stop));
    });
}

void PanelModel::load(const fs::path& file) {
    load([file, longEdge = m_settings.vectorLongEdge()](std::stop_token stop) -> State {
        return stateOf(ImageIntake::read(file, longEdge, stop));
    });
}

void PanelModel::load(const QByteArray& data, const QString& named, const QString& type) {
    load([data, named, type, longEdge = m_settings.vectorLongEdge()](std::stop_token stop) -> State {
        return stateOf(ImageIntake::read(data, named, type, longEdge, stop));
    });
}

void PanelModel::editInIntake(const LibraryItem& item) {
    load([file = item.url, longEdge = m_settings.vectorLongEdge()](
             std::stop_token stop) -> State { return stateOf(ImageIntake::read(file, longEdge, stop)); },
         Origin::library);
    setTab(Tab::intake);
}

void PanelModel::editItem(const QString& itemUrl) {
    if (const auto* item = m_imagesShelf.itemAt(itemUrl)) editInIntake(LibraryItem(*item));
}

void PanelModel::clear() {
    m_staging.cancel();
    m_before.reset();
    setStagedUnseen(false);
    ++m_turn;
    m_imagesShelf.setNote(std::nullopt);
    m_importQueue.dismiss();
    resetCutout();
    setState(Empty{});
    Q_EMIT stagingChanged();
    prepareExport();
}

void PanelModel::renameCurrent(const QString& proposed) {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return;
    const QString name = withoutSlashes(proposed);
    if (name.isEmpty() || name == image->name) return;
    PastedImage renamed = *image;
    renamed.name = name;
    setState(std::move(renamed));
    prepareExport();
}

std::expected<PastedImage, ImageIntakeError> PanelModel::imageToExport() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return std::unexpected(ImageIntakeError::nothingUsable());
    return m_showCutout && hasCutout() ? image->cutOut(m_cutout) : *image;
}

QImage PanelModel::displayImage() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return {};
    return m_showCutout && hasCutout() ? m_cutout : image->image;
}

std::optional<QString> PanelModel::resolutionWarning() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return {};
    return image->resolutionWarning();
}

void PanelModel::saveInBackground(std::function<std::expected<QString, QString>()> save) {
    m_saving.every([save = std::move(save)](const std::stop_token&) { return save(); },
                   [this, job = m_jobs.begin()](const std::expected<QString, QString>& note) {
                       m_jobs.end(job, note ? QString() : note.error());
                       if (note) m_imagesShelf.refresh();
                       m_imagesShelf.tell(note);
                   });
}

void PanelModel::saveCurrentToLibrary() {
    if (stage() != Stage::loaded) return;
    Q_EMIT nameWanted();
    const bool cutout = m_showCutout && hasCutout();
    using Written = std::expected<fs::path, StorageError>;
    m_saving.every(
        [make = exported(), collection = m_imagesShelf.collectionFilter().collection(),
         &storage = m_storage](const std::stop_token&) -> Written {
            return storage.write(make({}), Storage::Folder::images, collection);
        },
        [this, cutout, name = stagedName(), turn = m_turn, job = m_jobs.begin()](const Written& written) {
            m_jobs.end(job, written ? QString() : written.error().description());
            if (written) m_imagesShelf.refresh();
            m_imagesShelf.tell(turn == m_turn ? saveNote(written, cutout) : saveNoteOf(name, written));
        });
}

std::function<PastedImage(std::stop_token)> PanelModel::exported() const {
    const auto image = imageToExport();
    if (!image) return {};
    if (!m_showCutout || !hasCutout() || !refining()) return [image = *image](const std::stop_token&) { return image; };
    return [image = std::get<PastedImage>(m_state), refine = refinement()](const std::stop_token& stop) {
        return image.cutOut(refine(stop).touched.image);
    };
}

void PanelModel::prepareExport() {
    m_dragFile.discard();
    const auto make = exported();
    if (!make) return;
    const bool records = std::exchange(m_unrecorded, false) && m_pasteHistory.enabled();
    m_dragFile.prepare(
        [make, &storage = m_storage](const std::stop_token& stop) {
            return storage.prepare(make(stop), Storage::Folder::recent, {}, stop);
        },
        records ? recording(std::get<PastedImage>(m_state)) : DragFile::Listener());
}

bool PanelModel::hasExport() {
    Q_EMIT nameWanted();
    if (stage() == Stage::loaded && m_dragFile.state() == DragFile::State::idle) prepareExport();
    return stage() == Stage::loaded;
}

DragFile::Listener PanelModel::recording(const PastedImage& image) {
    return [this, image](const fs::path& readable) {
        auto opened = platform::KeptFile::open(readable);
        const auto png = opened ? std::make_shared<platform::KeptFile>(*std::move(opened)) : nullptr;
        m_recording.every(
            [image, png, history = m_pasteHistory.store()](const std::stop_token&) {
                history.keep(image, png ? png->readablePath() : fs::path());
                return true;
            },
            [this](bool) { m_pasteHistory.refresh(); });
    };
}

void PanelModel::stageAgain(int row) {
    const auto* entry = m_pasteHistory.at(row);
    if (!entry) return;
    load([entry = *entry, history = m_pasteHistory.store()](std::stop_token stop) -> State {
        return stateOf(history.read(entry, std::move(stop)));
    });
}

void PanelModel::offerPasted(DragRequest* request, int row) {
    const auto* entry = m_pasteHistory.at(row);
    if (!entry) return;
    m_pastedFile.prepare([picture = entry->picture(), name = entry->name, &storage = m_storage](
                             const std::stop_token& stop) { return storage.prepareCopy(picture, name, stop); });
    request->lateFiles = m_pastedFile.offer();
}

void PanelModel::offerStaged(DragRequest* request) {
    if (hasExport()) request->lateFiles = m_dragFile.offer();
}

std::optional<fs::path> PanelModel::fileOnDisk() {
    if (!hasExport()) return {};
    const auto files = m_dragFile.offer()();
    return files.empty() ? std::nullopt : std::optional(files.front());
}

void PanelModel::copyStaged() {
    if (hasExport()) m_dragFile.whenNamed([this](const fs::path& file) { m_fileActions.copy({urlOf(file)}); });
}

void PanelModel::copyStagedPath() {
    if (hasExport()) m_dragFile.whenNamed([this](const fs::path& file) { m_fileActions.copyPath({urlOf(file)}); });
}

void PanelModel::showStagedInFiles() {
    if (hasExport()) m_dragFile.whenNamed([this](const fs::path& file) { m_fileActions.showInFiles({urlOf(file)}); });
}

void PanelModel::pruneRecentInBackground(const fs::path& justWritten) {
    m_saving.every([&storage = m_storage, limit = m_settings.recentLimit(),
                    justWritten](const std::stop_token&) { return storage.pruneRecent(limit, justWritten); },
                   [this](int) { m_imagesShelf.refresh(); });
}

QString PanelModel::failureMessage() const {
    const auto* failed = std::get_if<Failed>(&m_state);
    return failed ? failed->message : QString();
}

QString PanelModel::failureHint() const {
    const auto* failed = std::get_if<Failed>(&m_state);
    return failed ? failed->hint.value_or(QString()) : QString();
}

QString PanelModel::stagedName() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    return image ? image->name : QString();
}

QString PanelModel::stagedDimensions() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return {};
    const QSize size = m_showCutout && hasCutout() ? m_cutout.size() : image->pixelSize.toSize();
    return QStringLiteral("%1 × %2").arg(size.width()).arg(size.height());
}

QString PanelModel::stagedProvenance() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    return image ? image->provenance() : QString();
}

QString PanelModel::stagedOrigin() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return {};
    QStringList lines{image->provenance()};
    const WebOrigin& web = image->webOrigin;
    if (!web.address.isEmpty()) lines += tr("Image: %1").arg(web.address);
    if (!web.page.isEmpty()) lines += tr("Page: %1").arg(web.page);
    return lines.join(u'\n');
}

QString PanelModel::stagedBadge() const {
    const auto* image = std::get_if<PastedImage>(&m_state);
    if (!image) return {};
    if (m_showCutout && hasCutout())
        return translate("Panel", "cutout · %1").arg(m_cutoutMethod ? label(*m_cutoutMethod).toLower() : QString());
    return image->hasAlphaChannel ? QStringLiteral("RGBA") : QStringLiteral("RGB");
}

} // namespace quillary
