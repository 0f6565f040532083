#include "skin/dib_section_region.h"

#include "log_book.h"
#include "skin/dib_section.h"
#include "skin/region_data.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

/// Records which window is shaped, and by what.
struct Shapes {
    struct Shaping {
        QWidget* window;
        std::optional<QRegion> shape;
    };
    std::vector<Shaping> all;
    ShapeWindow Hook() {
        return [this](QWidget* window, const QRegion* shape) {
            all.push_back({window, shape == nullptr ? std::nullopt : std::optional(*shape)});
        };
    }
};

QImage Corner(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkBlue);
    image.setPixel(width - 1, 0, qRgb(0xFF, 0xFF, 0xC0));
    return image;
}

class Region : public testing::Test {
  protected:
    LogBook book{false};
    Shapes shapes;
    cDIBSection dib{book.log};
    cDIBSectionRegion region{book.log, shapes.Hook()};
    QWidget a, b, c;
    QTemporaryDir folder;

    void SetUp() override {
        QCoreApplication::setApplicationName(QStringLiteral("Corvantine"));
        ASSERT_TRUE(dib.CreateFromPicture(Corner(8, 4)));
    }
    QRegion Expected() const { return QRegion(0, 0, 8, 4) - QRegion(7, 0, 1, 1); }
    RegionError ErrorOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const RegionError& error) {
            return error;
        }
        ADD_FAILURE() << "nothing was raised";
        return {};
    }
};

TEST_F(Region, CreateTakesTheOutlineOfThePicture) {
    EXPECT_EQ(region.Region(), nullptr);
    ASSERT_TRUE(region.Create(dib));
    EXPECT_EQ(*region.Region(), Expected());
}

TEST_F(Region, TheColourHandedInPlaysNoPart) {
    ASSERT_TRUE(region.Create(dib, 0x123456));
    EXPECT_EQ(*region.Region(), Expected());
}

TEST_F(Region, CreateWithoutAPictureLeavesNone) {
    ASSERT_TRUE(region.Create(dib));
    dib.ClearUp();
    EXPECT_FALSE(region.Create(dib));
    EXPECT_EQ(region.Region(), nullptr);
}

TEST_F(Region, CreateTakesTheFormerOneFromItsWindows) {
    region.Create(dib);
    region.SetApplied(&a, true);
    region.SetApplied(&b, true);
    shapes.all.clear();
    region.Create(dib);
    EXPECT_EQ(region.AppliedToCount(), 0);
    ASSERT_EQ(shapes.all.size(), 2U);
    EXPECT_EQ(shapes.all[0].window, &b);
    EXPECT_EQ(shapes.all[1].window, &a);
    EXPECT_FALSE(shapes.all[0].shape.has_value());
}

TEST_F(Region, ApplyingAppendsTheWindowAndShapesIt) {
    region.Create(dib);
    EXPECT_FALSE(region.Applied(&a));
    region.SetApplied(&a, true);
    region.SetApplied(&b, true);
    EXPECT_TRUE(region.Applied(&a));
    EXPECT_TRUE(region.Applied(&b));
    EXPECT_FALSE(region.Applied(&c));
    EXPECT_EQ(region.AppliedToCount(), 2);
    EXPECT_EQ(region.hWndForIndex(1), &a);
    EXPECT_EQ(region.hWndForIndex(2), &b);
    ASSERT_EQ(shapes.all.size(), 2U);
    EXPECT_EQ(shapes.all[1].window, &b);
    EXPECT_EQ(*shapes.all[1].shape, Expected());
}

TEST_F(Region, ApplyingAgainShapesTheLastWindowWhicheverWasAsked) {
    region.Create(dib);
    region.SetApplied(&a, true);
    region.SetApplied(&b, true);
    shapes.all.clear();
    region.SetApplied(&a, true);
    EXPECT_EQ(region.AppliedToCount(), 2);
    ASSERT_EQ(shapes.all.size(), 1U);
    EXPECT_EQ(shapes.all[0].window, &b);
}

TEST_F(Region, TakingAwayMovesTheLaterEntriesDown) {
    region.Create(dib);
    for (QWidget* window : {&a, &b, &c}) {
        region.SetApplied(window, true);
    }
    region.SetApplied(&b, false);
    EXPECT_EQ(region.AppliedToCount(), 2);
    EXPECT_EQ(region.hWndForIndex(1), &a);
    EXPECT_EQ(region.hWndForIndex(2), &c);
    EXPECT_EQ(shapes.all.back().window, &b);
    EXPECT_FALSE(shapes.all.back().shape.has_value());
}

TEST_F(Region, TakingAwayFromAStrangerStillUnshapesIt) {
    region.Create(dib);
    region.SetApplied(&a, true);
    region.SetApplied(&c, false);
    EXPECT_EQ(region.AppliedToCount(), 1);
    EXPECT_EQ(shapes.all.back().window, &c);
    EXPECT_FALSE(shapes.all.back().shape.has_value());
}

TEST_F(Region, ApplyingWithoutARegionTakesTheShapeAway) {
    region.SetApplied(&a, true);
    EXPECT_TRUE(region.Applied(&a));
    EXPECT_FALSE(shapes.all.back().shape.has_value());
}

TEST_F(Region, IndexOutsideOfTheListIsNull) {
    region.SetApplied(&a, true);
    for (const int index : {-1, 0, 2, INT_MAX, INT_MIN}) {
        EXPECT_EQ(region.hWndForIndex(index), nullptr) << index;
    }
}

TEST_F(Region, NoWindowIsNoEntry) {
    region.SetApplied(nullptr, true);
    region.SetApplied(nullptr, false);
    EXPECT_EQ(region.AppliedToCount(), 0);
    EXPECT_FALSE(region.Applied(nullptr));
}

TEST_F(Region, AWindowThatIsGoneIsForgotten) {
    region.Create(dib);
    auto gone = std::make_unique<QWidget>();
    region.SetApplied(gone.get(), true);
    gone.reset();
    region.SetApplied(&a, true);
    EXPECT_EQ(region.AppliedToCount(), 1);
    EXPECT_EQ(region.hWndForIndex(1), &a);
    gone = std::make_unique<QWidget>();
    region.SetApplied(gone.get(), true);
    gone.reset();
    region.Destroy();
    EXPECT_EQ(region.AppliedToCount(), 0);
}

TEST_F(Region, DestroyUnshapesAllWindowsAndFreesTheRegion) {
    region.Create(dib);
    region.SetApplied(&a, true);
    region.SetApplied(&b, true);
    region.Destroy();
    EXPECT_EQ(region.AppliedToCount(), 0);
    EXPECT_EQ(region.Region(), nullptr);
    EXPECT_EQ(shapes.all.size(), 4U);
}

TEST_F(Region, TheEndOfItsLifeUnshapesItsWindows) {
    {
        cDIBSectionRegion other(book.log, shapes.Hook());
        other.Create(dib);
        other.SetApplied(&a, true);
    }
    EXPECT_EQ(shapes.all.back().window, &a);
    EXPECT_FALSE(shapes.all.back().shape.has_value());
}

TEST_F(Region, SaveWritesThePublishedBytes) {
    region.Create(dib);
    const QString name = folder.filePath(QStringLiteral("face.rgn"));
    region.Save(name);
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), RegionToData(Expected()));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("face.rgn")});
}

TEST_F(Region, SaveReplacesAFormerFile) {
    const QString name = folder.filePath(QStringLiteral("face.rgn"));
    QFile former(name);
    ASSERT_TRUE(former.open(QIODevice::WriteOnly));
    former.write(QByteArray(5000, 'x'));
    former.close();
    region.Create(dib);
    region.Save(name);
    EXPECT_EQ(QFile(name).size(), RegionToData(Expected()).size());
}

TEST_F(Region, SaveWithoutARegionRaises) {
    const QString name = folder.filePath(QStringLiteral("none.rgn"));
    const RegionError error = ErrorOf([&] { region.Save(name); });
    EXPECT_EQ(error.number, 26010);
    EXPECT_EQ(error.source, QStringLiteral("Corvantine.cDIBSectionRegion"));
    EXPECT_EQ(error.text, QStringLiteral("No region to save"));
    EXPECT_FALSE(QFile::exists(name));
}

TEST_F(Region, SaveIntoNowhereRaisesAndKeepsWhatIsThere) {
    region.Create(dib);
    EXPECT_EQ(ErrorOf([&] { region.Save(folder.filePath(QStringLiteral("no/such/face.rgn"))); }).number,
              26012);
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("taken")));
    EXPECT_EQ(ErrorOf([&] { region.Save(folder.filePath(QStringLiteral("taken"))); }).number, 26012);
    EXPECT_TRUE(QDir(folder.filePath(QStringLiteral("taken"))).exists());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{QStringLiteral("taken")});
}

TEST_F(Region, LoadedIsWhatWasSaved) {
    region.Create(dib);
    const QString name = folder.filePath(QStringLiteral("face.rgn"));
    region.Save(name);
    cDIBSectionRegion other(book.log, shapes.Hook());
    other.SetApplied(&a, true);
    EXPECT_TRUE(other.LoadFromFile(name));
    EXPECT_EQ(*other.Region(), Expected());
    EXPECT_EQ(other.AppliedToCount(), 0) << "a new region is applied to nothing yet";
}

TEST_F(Region, BadFilesLeaveTheRegionAlone) {
    region.Create(dib);
    region.SetApplied(&a, true);
    const QString name = folder.filePath(QStringLiteral("bad.rgn"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no region at all, but long enough to look like a header of one");
    file.close();
    EXPECT_FALSE(region.LoadFromFile(name));
    EXPECT_FALSE(region.LoadFromFile(folder.filePath(QStringLiteral("missing.rgn"))));
    EXPECT_FALSE(region.LoadFromFile(folder.path()));
    EXPECT_FALSE(region.LoadFromFile({}));
    EXPECT_EQ(*region.Region(), Expected());
    EXPECT_TRUE(region.Applied(&a));
}

TEST_F(Region, AFileLargerThanAnyRegionIsNotRead) {
    const QString name = folder.filePath(QStringLiteral("large.rgn"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(qint64{200} * 1024 * 1024 * 1024)) << "sparse";
    file.close();
    EXPECT_FALSE(region.LoadFromFile(name));
}

TEST_F(Region, ResourceOfTheProgramLoads) {
    EXPECT_TRUE(region.LoadFromResource(QStringLiteral("FACE")));
    EXPECT_EQ(*region.Region(), QRegion(1, 2, 3, 4));
    EXPECT_TRUE(region.LoadFromResource(QStringLiteral("101")));
    EXPECT_EQ(*region.Region(), QRegion(5, 6, 7, 8)) << "a number names the resource #101";
}

TEST_F(Region, ResourceOfALibraryLoadsAndTheLibraryIsFreed) {
    const QString library = QStringLiteral(REGION_LIBRARY);
    EXPECT_TRUE(region.LoadFromResource(QStringLiteral("102"), library));
    EXPECT_EQ(*region.Region(), QRegion(9, 10, 11, 12));
    EXPECT_EQ(ErrorOf([&] { region.LoadFromResource(QStringLiteral("999"), library); }).number, 26014);
    EXPECT_TRUE(QDir(QStringLiteral(":/")).entryList({QStringLiteral("library*")}).isEmpty());
}

TEST_F(Region, ResourceErrorsNameWhatIsMissing) {
    RegionError error =
        ErrorOf([&] { region.LoadFromResource(QStringLiteral("7"), QStringLiteral("no.rcc")); });
    EXPECT_EQ(error.number, 26013);
    EXPECT_EQ(error.source, QStringLiteral("Corvantine.cDIBSectionRegion"));
    EXPECT_EQ(error.text, QStringLiteral("Can't open DLL for Resource Access"));
    error = ErrorOf([&] { region.LoadFromResource(QStringLiteral("7")); });
    EXPECT_EQ(error.number, 26014);
    EXPECT_EQ(error.text, QStringLiteral("Resource with ID 7 could not be found"));
    error = ErrorOf([&] { region.LoadFromResource(QStringLiteral("EMPTY")); });
    EXPECT_EQ(error.number, 26014);
    EXPECT_EQ(error.text, QStringLiteral("Cannot access data for resource with ID EMPTY could not be found"));
}

TEST_F(Region, AResourceThatIsNoRegionIsRefused) {
    region.Create(dib);
    EXPECT_FALSE(region.LoadFromResource(QStringLiteral("JUNK")));
    EXPECT_EQ(*region.Region(), Expected());
}

TEST(RegionShape, MaskOfTheWindow) {
    QWidget window;
    window.resize(20, 20);
    const QRegion shape(1, 2, 3, 4);
    ShapeByMask(&window, &shape);
    EXPECT_EQ(window.mask(), shape);
    ShapeByMask(&window, nullptr);
    EXPECT_TRUE(window.mask().isEmpty());
}

TEST(RegionShape, AnEmptyShapeShowsNothingOfTheWindow) {
    QWidget ground;
    ground.resize(20, 20);
    QPalette red;
    red.setColor(QPalette::Window, Qt::red);
    ground.setPalette(red);
    QWidget window(&ground);
    window.setGeometry(0, 0, 20, 20);
    window.setAutoFillBackground(true);
    QPalette green;
    green.setColor(QPalette::Window, Qt::green);
    window.setPalette(green);
    EXPECT_EQ(ground.grab().toImage().pixelColor(10, 10), QColor(Qt::green));
    const QRegion nothing;
    ShapeByMask(&window, &nothing);
    const QImage image = ground.grab().toImage();
    for (int y = 0; y < 20; ++y) {
        for (int x = 0; x < 20; ++x) {
            ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::red)) << x << "," << y;
        }
    }
    EXPECT_EQ(ground.childAt(10, 10), nullptr) << "nor does it take the mouse";
}

TEST(RegionLog, ApplyingTracesItsTwoLines) {
    LogBook book;
    QWidget window;
    {
        cDIBSectionRegion region(book.log, [](QWidget*, const QRegion*) {});
        region.SetApplied(&window, true);
        region.SetApplied(&window, false);
    }
    const QString handle =
        QString::number(reinterpret_cast<quintptr>(&window), 16).toUpper() + QLatin1Char('h');
    EXPECT_EQ(book.Lines().mid(0, 8),
              (QStringList{">>> cDIBSectionRegion.Applied(hWnd: " + handle + ", bState: True)",
                           "    >>> cDIBSectionRegion.GDI.SetWindowRgn",
                           "    (< cDIBSectionRegion.GDI.SetWindowRgn", "(< cDIBSectionRegion.Applied",
                           ">>> cDIBSectionRegion.Applied(hWnd: " + handle + ", bState: False)",
                           "    >>> cDIBSectionRegion.GDI.SetWindowRgn",
                           "    (< cDIBSectionRegion.GDI.SetWindowRgn", "(< cDIBSectionRegion.Applied"}));
}

TEST(RegionLog, CreateEndsWithItsName) {
    LogBook book;
    LogBook quiet(false);
    cDIBSection dib(quiet.log);
    dib.CreateFromPicture(Corner(4, 2));
    QStringList lines;
    {
        cDIBSectionRegion region(book.log);
        region.Create(dib);
        lines = book.Lines();
    }
    ASSERT_GE(lines.size(), 4);
    EXPECT_TRUE(lines.first().startsWith(QLatin1String(">>> cDIBSectionRegion.Create(")));
    EXPECT_EQ(lines.last(), QStringLiteral("(< cDIBSectionRegion.Create"));
    EXPECT_TRUE(lines.contains(QStringLiteral("    lWidth is 4")));
    EXPECT_TRUE(lines.contains(QStringLiteral("    Found start pixel at X:3 Y:0")));
}

} // namespace
