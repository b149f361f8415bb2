#include "base/FileUrl.h"
#include "base/Text.h"
#include "base/Translation.h"
#include "library/AppSettings.h"
#include "panel/PanelModel.h"
#include "panel/PanelModelWriting.h"
#include "platform/Clipboard.h"

#include <algorithm>

namespace quillary {

namespace fs = std::filesystem;

namespace {

QString withoutSlashes(QString name) {
    name.replace(u'/', u'-').replace(u':', u'-');
    return name.trimmed();
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
    m_staging.cancel();
    resetCutout();
    setState(Failed{message, hint});
    Q_EMIT stagingChanged();
    prepareExport();
}

void PanelModel::setStaged(std::optional<fs::path> url) {
    writeIfDifferent(m_staged, std::move(url), &PanelModel::stagedChanged);
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
    setStaged({});
    m_imagesShelf.setNote(std::nullopt);
    resetCutout();
    m_prepared.reset();
    m_export.cancel();
    m_staging.run(make, [this, origin](State next) {
        setState(std::move(next));
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
    setStaged({});
    m_imagesShelf.setNote(std::nullopt);
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
    setStaged({});
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
                   [this](const std::expected<QString, QString>& note) {
                       if (note) m_imagesShelf.refresh();
                       m_imagesShelf.tell(note);
                   });
}

void PanelModel::saveCurrentToLibrary() {
    if (stage() != Stage::loaded) return;
    settleRefine();
    const bool cutout = m_showCutout && hasCutout();
    saveInBackground([image = *imageToExport(), collection = m_imagesShelf.collectionFilter().collection(), cutout,
                      &storage = m_storage]() -> std::expected<QString, QString> {
        const auto written = storage.write(image, Storage::Folder::images, collection);
        if (!written) return std::unexpected(written.error().description());
        return cutout ? translate("Panel", "Cutout saved to your library")
                      : translate("Panel", "Saved to your library");
    });
}

void PanelModel::prepareExport() {
    m_prepared.reset();
    m_export.cancel();
    const auto exported = imageToExport();
    if (!exported) return;
    using Ready = std::expected<Storage::Prepared, StorageError>;
    const auto turn = ++m_exports;
    if (!std::exchange(m_unrecorded, false) || !m_pasteHistory.enabled()) {
        m_export.run(
            [image = *exported, &storage = m_storage](std::stop_token stop) -> Ready {
                return storage.prepare(image, Storage::Folder::recent, {}, stop);
            },
            [this](Ready prepared) { takePrepared(std::move(prepared)); });
        return;
    }
    // The same bytes serve the history, and go there even when a newer picture follows at once.
    m_recording.every(
        [image = *exported, &storage = m_storage, history = m_pasteHistory.store()](const std::stop_token&) -> Ready {
            Ready prepared = storage.prepare(image, Storage::Folder::recent, {});
            history.keep(image, prepared ? prepared->readablePath() : fs::path());
            return prepared;
        },
        [this, turn](Ready prepared) {
            if (turn == m_exports) takePrepared(std::move(prepared));
            m_pasteHistory.refresh();
        });
}

/// A failure is told when the drag tries again.
void PanelModel::takePrepared(std::expected<Storage::Prepared, StorageError> prepared) {
    if (prepared) m_prepared = std::move(*prepared);
}

void PanelModel::stageAgain(int row) {
    const auto* entry = m_pasteHistory.at(row);
    if (!entry) return;
    load([entry = *entry, history = m_pasteHistory.store()](std::stop_token stop) -> State {
        return stateOf(history.read(entry, std::move(stop)));
    });
}

QString PanelModel::pastedFileUrl(int row) {
    const auto* entry = m_pasteHistory.at(row);
    if (!entry) return {};
    const auto file = m_storage.copyToRecent(entry->picture(), entry->name);
    if (file) {
        pruneRecentInBackground();
        return QString::fromLatin1(fileUrl(*file));
    }
    m_imagesShelf.setNote(file.error().description(), Shelf::Tone::problem);
    m_pasteHistory.refresh();
    return {};
}

std::expected<fs::path, QString> PanelModel::fileOnDisk() {
    settleRefine();
    std::error_code ignored;
    if (m_staged && fs::exists(*m_staged, ignored)) return *m_staged;
    const auto exported = imageToExport();
    if (!exported) return std::unexpected(exported.error().description());

    std::expected<fs::path, StorageError> written = std::unexpected(StorageError::noRoot());
    if (m_prepared) written = m_storage.place(*std::exchange(m_prepared, {}), exported->name);
    m_export.cancel();
    // Not encoded ahead, or its folder went away meanwhile: the long way.
    if (!written) written = m_storage.write(*exported, Storage::Folder::recent, {});
    if (!written) return std::unexpected(written.error().description());
    setStaged(*written);
    pruneRecentInBackground();
    return *written;
}

void PanelModel::pruneRecentInBackground() {
    m_saving.every([&storage = m_storage,
                    limit = m_settings.recentLimit()](const std::stop_token&) { return storage.pruneRecent(limit); },
                   [this](int) { m_imagesShelf.refresh(); });
}

QString PanelModel::stagedFileUrl() {
    const auto file = fileOnDisk();
    if (file) return QString::fromLatin1(fileUrl(*file));
    m_imagesShelf.setNote(file.error(), Shelf::Tone::problem);
    return {};
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
