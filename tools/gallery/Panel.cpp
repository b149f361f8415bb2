#include "Chapter.h"
#include "base/FileUrl.h"
#include "blocks/ArrangementStore.h"
#include "samples/Clips.h"
#include "support/Jam.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <functional>

namespace quillary::gallery {

namespace {

QImage logo(int side) {
    QImage image(side, side, QImage::Format_RGBA8888);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPolygonF hexagon;
    for (int corner = 0; corner < 6; ++corner) {
        const double angle = (corner + 0.5) * M_PI / 3;
        hexagon << QPointF(side / 2.0 + side * 0.45 * std::cos(angle), side / 2.0 + side * 0.45 * std::sin(angle));
    }
    QLinearGradient gradient(0, 0, side, side);
    gradient.setColorAt(0, QColor(0xFF8A5B));
    gradient.setColorAt(1, QColor(0xD6336C));
    painter.setBrush(gradient);
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(hexagon);
    return image;
}

QImage photo(int width, int height, QColor from, QColor to) {
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, width, height);
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    painter.fillRect(image.rect(), gradient);
    return image;
}

QImage disc(QColor color) {
    QImage image(400, 400, QImage::Format_RGBA8888);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(image.rect());
    return image;
}

/// Two sets of icons for the panel to browse.
std::filesystem::path builtIns() {
    static const test::TemporaryFolder folder;
    for (const char* icon : {"Arrows/Arrow left", "Arrows/Arrow right", "Shapes/Disc"})
        test::writeFile(folder / (std::string(icon) + ".svg"),
                        "<svg xmlns='http://www.w3.org/2000/svg' width='24' height='24'>"
                        "<path fill='#f2b45a' d='M2 10h12V5l8 7-8 7v-5H2z'/></svg>");
    return folder.path();
}

class Panel : public Chapter {
public:
    explicit Panel(const QString& folder) : Chapter(folder, builtIns()) {}

    void takeAll();

private:
    void stageImage(const std::filesystem::path& file) {
        stage.model.load(file);
        test::comesTrue([this] { return !stage.model.staging(); });
    }
    void takeCutouts() {
        PanelModel& model = stage.model;
        QImage onPaper(2048, 1365, QImage::Format_RGB32);
        onPaper.fill(QColor(0xFBFBF8));
        QPainter(&onPaper).drawImage(QRect(640, 300, 768, 768), logo(768));
        stageImage(stage.file("On paper.png", onPaper));
        take("cutout-before");
        press(Qt::Key_Tab);
        take("cutout-focus");
        if (QObject* menu = find("cutoutMethods")) {
            QMetaObject::invokeMethod(menu, "open");
            take("cutout-menu");
            QMetaObject::invokeMethod(menu, "close");
        }
        {
            const test::Jam jam(stage.work);
            model.removeBackground();
            take("cutout-working");
            model.stopRemoval();
        }
        model.removeBackground();
        test::comesTrue([&] { return model.cutoutProgress() == PanelModel::CutoutProgress::ready; });
        take("cutout");
        model.setEdgeRefine(1);
        take("cutout-tighter");
        model.touchUp()->setTrim(true);
        model.touchUp()->setEnclosed(true);
        test::comesTrue([&] { return !model.refining(); });
        if (QObject* menu = find("cutoutMethods")) {
            QMetaObject::invokeMethod(menu, "open");
            take("cutout-touched");
            QMetaObject::invokeMethod(menu, "close");
        }
        model.touchUp()->setTrim(false);
        model.touchUp()->setEnclosed(false);
        model.setShowCutout(false);
        take("cutout-original");
        model.setShowCutout(true);
        take("cutout-small", small);
        stageImage(stage.file("flat.png", photo(640, 360, QColor(0x4A76A8), QColor(0x4A76A8))));
        model.removeBackground();
        test::comesTrue([&] { return model.cutoutProgress() == PanelModel::CutoutProgress::failed; });
        take("cutout-failed");
        take("cutout-failed-small", small);
    }
    void fillLibrary() {
        const auto shelf = stage.root() / "Library" / "Images";
        const auto save = [&](const char* name, const QImage& image) {
            std::filesystem::create_directories((shelf / name).parent_path());
            image.save(QString::fromStdString((shelf / name).string()));
        };
        save("Northwind.png", logo(600));
        save("Badge green.png", disc(QColor(0x5CC9A6)));
        save("Badge violet.png", disc(QColor(0x8478E0)));
        save("Screenshot 2024-03-11 at 14.02 with a long name.png",
             photo(1600, 900, QColor(0x4A76A8), QColor(0xC48A62)));
        save("Map of route.jpg", photo(900, 1200, QColor(0x233038), QColor(0x76988A)));
        save("Logos/Callout.png", disc(QColor(0x388ADE)));
        save("Logos/Clients/Sun.png", disc(QColor(0xF2C94C)));
        save("Lower thirds/Plain.png", photo(1200, 300, QColor(0x8478E0), QColor(0x5548B0)));
        for (int i = 1; i <= 14; ++i)
            save(qPrintable(QStringLiteral("Series/Frame %1.png").arg(i)), disc(QColor::fromHsv(i * 24, 140, 210)));
        std::filesystem::create_directories(shelf / "Arrows");
        test::writeFile(shelf / "Broken.png", "no picture");
    }
    void refresh() {
        stage.model.refreshShelves();
        test::wait(200);
        test::comesTrue([this] { return stage.model.imagesShelf()->loaded(); });
    }
    /// In the Settings sheet, which is no part of the view's tree of items.
    QObject* inSettings(const char* name) {
        QObject* loader = find("settingsSheetLoader");
        auto* sheet = loader ? loader->property("item").value<QObject*>() : nullptr;
        return sheet ? sheet->findChild<QObject*>(QString::fromLatin1(name)) : nullptr;
    }
    void keep(const char* name, const QByteArray& xml, const char* collection = nullptr) {
        const auto filed = collection ? std::optional(QString::fromUtf8(collection)) : std::nullopt;
        const auto block = ArrangementStore(stage.storage).save(xml, QString::fromUtf8(name), filed);
        if (!block) std::fprintf(stderr, "%s\n", qPrintable(block.error().description()));
    }
    void takeBlocks() {
        BlocksShelf& blocks = *stage.model.blocksShelf();
        stage.model.setLibraryKind(PanelModel::LibraryKind::blocks);
        take("blocks-empty");
        const auto media = stage.folder / "media";
        const auto clip = [&](const char* layers) {
            return test::fcpxml(13, "", QByteArray("<ref-clip name='x' duration='65/10s'>") + layers + "</ref-clip>");
        };
        keep("Intro sting", test::richCompound(media));
        keep("End card", clip("<title lane='1'/>"));
        keep("Lower third — name", clip("<title lane='2'/><video lane='1'/><gap lane='-1'/>"));
        keep("A long name of a block with many layers",
             clip(QByteArray("<title lane='1'/><clip lane='2'/><video lane='3'/>").repeated(12).constData()));
        keep("Opening titles", clip("<video lane='1'/>"));
        keep("Filed away", clip("<title lane='3'/>"), "Intros / 2026");
        const auto folder = stage.root() / Storage::blocksFolder();
        (void)ArrangementStore(stage.storage)
            .setPoster(photo(1600, 900, QColor(0x4A3A68), QColor(0xC45A72)), folder / "Intro sting.fcpxml");
        blocks.refresh();
        test::comesTrue([&] { return blocks.blocks().size() == 6; });
        const auto select = [&](const char* name) {
            blocks.selection()->clear();
            blocks.selection()->toggle(blocks.visibleModel()->rowNamed(QString::fromUtf8(name), 0), 0);
        };
        take("blocks");
        select("Lower");
        blocks.note(QStringLiteral("Saved 1 block"));
        take("blocks-selected");
        select("Intro");
        take("blocks-poster");
        take("blocks-small", small);
        take("blocks-large", large);
        blocks.selection()->selectAll();
        take("blocks-several");
        blocks.selection()->clear();
        blocks.pick(Shelf::Place::Collection, QStringLiteral("Intros / 2026"));
        take("blocks-collection");
        blocks.pick(Shelf::Place::All, {});
        blocks.setSearch(QStringLiteral("in"));
        take("blocks-search");
        blocks.setSearch({});
        for (auto* view : stage.view->findChildren<QObject*>(QStringLiteral("blockTiles"))) {
            select("Intro");
            view->setProperty("currentIndex", blocks.visibleModel()->rowNamed(QStringLiteral("Intro"), 0));
            QMetaObject::invokeMethod(view, "openMenu");
            take("blocks-menu");
            press(Qt::Key_Escape);
        }
        blocks.selection()->clear();
        takeBlockSheets(folder / "Intro sting.fcpxml");
        stage.model.setLibraryKind(PanelModel::LibraryKind::images);
    }
    /// A block whose media moved and are missing, and an export of it.
    void takeBlockSheets(const std::filesystem::path& block) {
        BlocksShelf& blocks = *stage.model.blocksShelf();
        const auto videos = stage.root() / "Library/Videos/Final Cut Elements";
        std::filesystem::remove(videos / "no uid.mov");
        std::filesystem::rename(videos / "A1B2C3D4-interview take 1.mov",
                                stage.root() / "Library/Audio/Final Cut Elements/interview.mov");
        blocks.refresh();
        test::comesTrue([&] {
            const auto* health = blocks.care()->of(block);
            return health && health->count(BlockHealth::State::missing) == 1;
        });
        take("blocks-badge");
        const QString url = QString::fromLatin1(fileUrl(block));
        QObject* view = stage.view->findChild<QObject*>(QStringLiteral("blocksView"));
        QMetaObject::invokeMethod(view, "showMedia", Q_ARG(QString, url));
        take("block-media");
        take("block-media-small", small);
        press(Qt::Key_Escape);
        QMetaObject::invokeMethod(view, "askForExport", Q_ARG(QString, url),
                                  Q_ARG(QString, QStringLiteral("Intro sting")));
        take("block-export-asked");
        blocks.exporting()->exportBlock(url, BlockExportJob::Format::Otio, false);
        stage.chooser.answer({stage.folder / "media"});
        test::comesTrue([&] { return blocks.exporting()->stage() == BlockExportJob::Stage::Done; });
        take("block-export");
        take("block-export-small", small);
        press(Qt::Key_Escape);
    }
    QObject* find(const char* name) { return stage.view->findChild<QObject*>(QString::fromLatin1(name)); }
};

void Panel::takeAll() {
    PanelModel& model = stage.model;
    ImagesShelf& images = *model.imagesShelf();
    take("import-empty");
    take("import-empty-small", small);

    QMimeData dragged;
    dragged.setUrls({QUrl(QStringLiteral("file:///picture.png"))});
    QDragEnterEvent enter({190, 200}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&stage.window, &enter);
    take("import-targeted");
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&stage.window, &leave);

    stageImage(stage.folder / "missing.png");
    take("import-failed");
    const auto northwind = stage.file("Northwind logo with a name that is far too long for the line.png", logo(2048));
    stageImage(northwind);
    take("import-loaded");
    press(Qt::Key_Tab, 3);
    take("import-focus");
    take("import-loaded-small", small);
    take("import-loaded-large", large);
    model.saveCurrentToLibrary();
    test::comesTrue([&] { return model.librarySaveNote().has_value(); });
    take("import-saved");
    stageImage(stage.file("small.png", photo(640, 360, QColor(0x4A76A8), QColor(0xC48A62))));
    take("import-warning");
    takeCutouts();

    model.setTab(PanelModel::Tab::library);
    std::filesystem::remove_all(stage.root() / "Library");
    refresh();
    take("library-empty");
    fillLibrary();
    refresh();
    for (int row = 1; row < images.visibleModel()->count(); row += 5)
        images.toggleFavorite(images.visibleModel()->index(row).data(ItemListModel::UrlRole).toString());
    take("library");
    take("library-small", small);
    take("library-large", large);
    images.pick(Shelf::Place::Collection, QStringLiteral("Logos / Clients"));
    take("library-collection");
    images.pick(Shelf::Place::Recent, {});
    take("library-recent");
    images.pick(Shelf::Place::BuiltIn, QStringLiteral("Arrows"));
    take("library-built-in");
    images.pick(Shelf::Place::All, {});
    images.setSearch(QStringLiteral("badge"));
    take("library-search");
    images.setSearch(QStringLiteral("zebra"));
    take("library-no-match");
    images.setSearch({});
    if (QObject* menu = find("collectionMenu")) {
        QMetaObject::invokeMethod(menu, "open");
        take("library-menu");
        QMetaObject::invokeMethod(menu, "close");
    }
    if (QObject* tiles = find("tiles")) {
        stage.view->findChild<QQuickItem*>(QStringLiteral("tiles"))->forceActiveFocus(Qt::TabFocusReason);
        press(Qt::Key_Right, 2);
        QMetaObject::invokeMethod(tiles, "openMenu");
        press(Qt::Key_Down);
        take("library-tile-menu");
        press(Qt::Key_Escape);
    }
    images.selection()->toggle(2, 0);
    images.selection()->toggle(6, Qt::ShiftModifier);
    take("library-selection");
    if (QObject* targets = find("moveTargets")) {
        QMetaObject::invokeMethod(targets, "open");
        test::wait(200);
        press(Qt::Key_Down, 2);
        press(Qt::Key_Right);
        test::wait(200);
        press(Qt::Key_Down);
        take("library-move");
        press(Qt::Key_Escape, 2);
    }
    images.transform(images.selection()->urls(), QStringLiteral("rotateLeft"));
    take("library-turned");
    images.undo();
    take("library-undone");
    take("library-undone-small", small);
    images.selection()->clear();
    const auto elsewhere = stage.folder / "drive/Stills";
    std::filesystem::create_directories(elsewhere);
    std::filesystem::create_directory_symlink(elsewhere, stage.root() / "Library/Images/Stills");
    stage.bookmarks.fenced = {elsewhere.parent_path()};
    model.appear();
    test::comesTrue([&] { return model.blockedAliases()->blockedAliasCount() == 1; });
    take("library-alias");
    take("library-alias-small", small);
    stage.bookmarks.fenced.clear();
    model.appear();
    if (QObject* sheet = find("newCollection")) {
        QMetaObject::invokeMethod(sheet, "ask", Q_ARG(QString, QString()));
        take("library-sheet");
        QMetaObject::invokeMethod(sheet, "close");
    }
    takeBlocks();
    const auto settings = [&](bool shown) { stage.view->setProperty("showingSettings", shown); };
    const auto scrollSettings = [&] {
        if (QObject* groups = inSettings("settingsGroups"))
            groups->setProperty("contentY",
                                groups->property("contentHeight").toReal() - groups->property("height").toReal());
    };
    settings(true);
    take("settings");
    press(Qt::Key_Tab, 2);
    take("settings-focus");
    scrollSettings();
    take("settings-end");
    if (QObject* picker = inSettings("recentLimit")) {
        QMetaObject::invokeMethod(picker, "clicked");
        take("settings-menu");
        press(Qt::Key_Escape);
    }
    model.settings()->chooseRecentLimit(500);
    take("settings-alert");
    stage.resize({320, 400});
    take("settings-alert-small");
    model.settings()->keepNeverDelete();
    take("settings-small");
    stage.resize({380, 460});
    model.settings()->copyJob()->offer(stage.folder / "library/Quillary", stage.folder / "new");
    test::comesTrue([&] { return model.settings()->copyJob()->offered(); });
    take("settings-copy");
    model.settings()->copyJob()->copy(true, false, false, false, true);
    test::comesTrue([&] { return !model.settings()->copyJob()->copying(); });
    if (QObject* groups = inSettings("settingsGroups")) groups->setProperty("contentY", 200);
    take("settings-copied");
    settings(false);
    stage.ownChooser.ask(&stage.model,
                         {.message = QStringLiteral("Choose where to keep the Quillary folder. A folder called "
                                                    "“Quillary” is created inside whatever you pick."),
                          .accept = QStringLiteral("Use Folder"),
                          .start = stage.folder / "library/Quillary/Library"},
                         [](const auto&) {});
    take("chooser");
    stage.ownChooser.cancel();
    stage.ownChooser.ask(&stage.model,
                         {.kind = platform::FileChooser::Kind::files,
                          .message = QStringLiteral("Choose images to add to your library."),
                          .accept = QStringLiteral("Import"),
                          .start = stage.folder / "library/Quillary/Library/Images",
                          .extensions = {QStringLiteral("png")}},
                         [](const auto&) {});
    for (int row = 0, picked = 0; row < stage.ownChooser.entries().size() && picked < 2; ++row)
        if (!stage.ownChooser.entries()[row].endsWith(u'/')) {
            stage.ownChooser.open(row);
            ++picked;
        }
    take("chooser-files");
    stage.ownChooser.cancel();
    stage.store.setValue(SettingsKey::rootFolderBookmark, QByteArray("gone"));
    {
        Storage gone(stage.store, stage.bookmarks, stage.desktop);
        SettingsModel unavailable(
            {stage.settings, gone, stage.chooser, stage.fileManager, stage.work, stage.model.jobs()});
        QQmlComponent view(&stage.engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillary/Library/SettingsView.qml")));
        const std::unique_ptr<QObject> sheet(
            view.createWithInitialProperties({{QStringLiteral("parent"), QVariant::fromValue(stage.view.get())},
                                              {QStringLiteral("history"), QVariant::fromValue(model.pasteHistory())},
                                              {QStringLiteral("settings"), QVariant::fromValue(&unavailable)}}));
        sheet->findChild<QObject*>(QStringLiteral("settingsGroups"))->setProperty("contentY", 150);
        take("settings-unavailable");
    }

    stage.view->setProperty("dark", false);
    take("light-library");
    model.setTab(PanelModel::Tab::intake);
    take("light-import");
}

} // namespace

void takePanel(const QString& folder) {
    Panel(folder).takeAll();
}

} // namespace quillary::gallery
