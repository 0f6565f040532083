#include "skins_fixture.h"

namespace {

struct BadSkin {
    const char* name;
    QByteArray bytes;
};

class BadSkins : public Skins, public testing::WithParamInterface<BadSkin> {};

TEST_P(BadSkins, LeavesTheOldFaceUsable) {
    Put(QStringLiteral("good"), toy::FacePicture(QColor(10, 20, 30)));
    Put(QStringLiteral("zbad"), GetParam().bytes);
    Make();
    skins->SetControlColorsToMatchSkin();
    const QRegion outline = form.mask();
    record.Running = true;
    timer->start();
    steps.clear();
    skins->SkinColourImage_Click();
    EXPECT_EQ(skins->SkinIndex, 1);
    EXPECT_TRUE(AllVisible()) << State().toStdString();
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(FaceAt(160, 100), 0x1E140AU);
    EXPECT_EQ(form.mask(), outline);
    EXPECT_EQ(skins->GetDIBPixel(160, 100), 0x1E140AU);
    EXPECT_FALSE(steps.last().startsWith(QLatin1String("sleep"))) << "nothing has changed that must settle";
    skins->SkinColourImage_Click();
    EXPECT_EQ(skins->SkinIndex, 0) << "the next click goes on";
}

INSTANTIATE_TEST_SUITE_P(All, BadSkins,
                         testing::Values(BadSkin{"Empty", {}}, BadSkin{"Junk", QByteArray(3000, 'x')},
                                         BadSkin{"Truncated", bitmap::Plain(320, 200).chopped(5000)},
                                         BadSkin{"OnePixel", bitmap::Plain(1, 1)},
                                         BadSkin{"EightBitCut", bitmap::Palette(320, 200).chopped(1)},
                                         BadSkin{"RunLengthCut", bitmap::RunLength(320, 200).chopped(40)},
                                         BadSkin{"Huge", bitmap::Header(20000, 20000, 24)},
                                         BadSkin{"HugeRunLength",
                                                 bitmap::Header(20000, 20000, 8, 1) + QByteArray("\0\1", 2)}),
                         [](const auto& bad) { return bad.param.name; });

TEST_F(Skins, EightBitAndRunLengthSkinsAreWorn) {
    Put(QStringLiteral("a"), bitmap::Palette(320, 200));
    Put(QStringLiteral("b"), bitmap::RunLength(320, 200));
    Make();
    for (const int index : {0, 1}) {
        skins->SkinIndex = index;
        skins->SetControlColorsToMatchSkin();
        EXPECT_EQ(FaceAt(100, 100), 0x000000U);
        EXPECT_EQ(form.mask(), QRegion(0, 0, 160, 200)) << "white is the key: it is at the top right";
    }
}

TEST_F(Skins, AVanishedFileOrIndexLeavesTheOldFace) {
    Put(QStringLiteral("a"), toy::FacePicture(QColor(10, 20, 30)));
    Put(QStringLiteral("b"), toy::FacePicture(QColor(40, 50, 60)));
    Make().SetControlColorsToMatchSkin();
    record.Running = true;
    ASSERT_TRUE(QFile::remove(PathOf(QStringLiteral("b"))));
    skins->SkinColourImage_Click();
    EXPECT_TRUE(AllVisible());
    EXPECT_TRUE(timer->isActive());
    for (const int index : {2, 77, INT_MAX}) {
        skins->SkinIndex = index;
        skins->SetControlColorsToMatchSkin();
        EXPECT_TRUE(AllVisible());
        EXPECT_EQ(FaceAt(160, 100), 0x1E140AU);
    }
    skins->SkinIndex = INT_MIN;
    skins->SetControlColorsToMatchSkin();
    EXPECT_TRUE(AllVisible());
}

TEST_F(Skins, AFolderThatVanishesWhileRunningLeavesTheOldFace) {
    Put(QStringLiteral("a"), toy::FacePicture(QColor(10, 20, 30)));
    Make().SetControlColorsToMatchSkin();
    ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("skins"))).removeRecursively());
    skins->SkinColourImage_Click();
    EXPECT_TRUE(AllVisible());
    EXPECT_EQ(FaceAt(160, 100), 0x1E140AU);
}

TEST_F(Skins, WithoutAUsableSkinTheFormHasAPlainFaceWithAShape) {
    Put(QStringLiteral("a"), QByteArray("junk"));
    Make();
    skins->SkinIndex = -1;
    skins->SetControlColorsToMatchSkin();
    EXPECT_TRUE(AllVisible());
    EXPECT_EQ(FaceAt(160, 100), 0x3C3C3CU);
    EXPECT_EQ(skins->SkinColourAt(*form.control<KnobControl1>("TimeBaseKnob")), 0x3C3C3CU);
    EXPECT_TRUE(form.mask().contains(QPoint(160, 100)));
    EXPECT_TRUE(form.mask().contains(QPoint(160, 0)));
    EXPECT_FALSE(form.mask().contains(QPoint(0, 0)));
    EXPECT_FALSE(form.mask().contains(QPoint(319, 0)));
}

} // namespace
