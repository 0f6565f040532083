#include "skins_fixture.h"

namespace {

TEST_F(Skins, ListingTakesNamesFromTheSeventeenthCharacter) {
    for (const char* name : {"Steel", "anthracite", "Blue sea"}) {
        Put(QLatin1String(name), toy::FacePicture(Qt::gray));
    }
    for (const char* stranger : {"skins/Other.bmp", "skins/Corvantine_skin_Photo.png",
                                 "Corvantine_skin_Up.bmp", "skins/Corvantine_skin_Loud.BMP"}) {
        QFile file(folder.filePath(QLatin1String(stranger)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("skins/") + kSkin.arg(QStringLiteral("Folder"))));
    Make();
    const auto* list = form.control<QListWidget>("SkinColourList");
    EXPECT_EQ(TextsOf(*list), (QStringList{"anthracite", "Blue sea", "Steel"}));
    EXPECT_EQ(list->currentRow(), 0);
    EXPECT_EQ(TextsOf(*form.control<QListWidget>("SkinFiles")),
              (QStringList{kSkin.arg("anthracite"), kSkin.arg("Blue sea"), kSkin.arg("Steel")}));
    EXPECT_FALSE(form.control<Picture>("SkinColourImage")->isHidden());
}

TEST_F(Skins, ListingAgainStartsAnew) {
    Put(QStringLiteral("a"), toy::FacePicture(Qt::gray));
    Make();
    skins->ListSkins();
    EXPECT_EQ(form.control<QListWidget>("SkinColourList")->count(), 1);
    EXPECT_EQ(form.control<QListWidget>("SkinFiles")->count(), 1);
}

TEST_F(Skins, WithoutAnyTheClickerIsHiddenAndDoesNothing) {
    Make();
    EXPECT_TRUE(form.control<Picture>("SkinColourImage")->isHidden());
    EXPECT_EQ(form.control<QListWidget>("SkinColourList")->currentRow(), -1);
    skins->SkinColourImage_Click();
    EXPECT_EQ(skins->SkinIndex, 0);
    record.Running = true;
    timer->start();
    skins->SetControlColorsToMatchSkin();
    EXPECT_TRUE(steps.isEmpty());
    EXPECT_TRUE(timer->isActive());
}

TEST_F(Skins, AMissingFolderIsNoSkins) {
    ASSERT_TRUE(QDir(folder.path()).rmdir(QStringLiteral("skins")));
    Make();
    EXPECT_TRUE(form.control<Picture>("SkinColourImage")->isHidden());
}

TEST_F(Skins, AFaceWithoutAPictureStartsWithTheFirstSoundOne) {
    Put(QStringLiteral("a"), QByteArray("junk"));
    Put(QStringLiteral("b"), toy::FacePicture(QColor(1, 2, 3)));
    Put(QStringLiteral("c"), toy::FacePicture(QColor(4, 5, 6)));
    Make();
    EXPECT_EQ(FaceAt(160, 100), 0x030201U);
}

TEST_F(Skins, StepsComeInTheirOrder) {
    Put(QStringLiteral("a"), toy::FacePicture(Qt::gray));
    Make();
    record.Running = true;
    timer->start();
    skins->SetControlColorsToMatchSkin();
    // RunButton and OnceButton stay; the bars and all buttons are back before the knobs and sliders.
    const QString hidden = QStringLiteral("-") + "++" + "---------" + "----" + "---";
    const QString half = QStringLiteral("+") + "++" + "+++++++++" + "----" + "---";
    const QString whole = QStringLiteral("+") + "++" + "+++++++++" + "++++" + "+++";
    EXPECT_EQ(steps, (QStringList{"events, " + hidden, "events, " + hidden, "events, " + half,
                                  "sleep 100, " + whole}));
    EXPECT_EQ(State(), whole + " runs");
}

TEST_F(Skins, StoppedInstrumentStaysStopped) {
    Put(QStringLiteral("a"), toy::FacePicture(Qt::gray));
    Make();
    skins->SetControlColorsToMatchSkin();
    EXPECT_FALSE(timer->isActive());
}

TEST_F(Skins, ThePictureChangesBetweenTheFirstTwoYields) {
    Put(QStringLiteral("a"), toy::FacePicture(QColor(10, 20, 30)));
    Put(QStringLiteral("b"), toy::FacePicture(QColor(40, 50, 60)));
    Make();
    std::vector<Colour> faces;
    onEvents = [&] { faces.push_back(FaceAt(160, 100)); };
    skins->SkinIndex = 1;
    skins->SetControlColorsToMatchSkin();
    EXPECT_EQ(faces, (std::vector<Colour>{0x1E140A, 0x3C3228, 0x3C3228}));
}

TEST_F(Skins, EachControlTakesTheColourUnderItsCentre) {
    // Every pixel says where it is: red its column, green its row, blue the upper bits of both.
    QImage map(toy::kFace, QImage::Format_RGB32);
    for (int y = 0; y < map.height(); ++y) {
        for (int x = 0; x < map.width(); ++x) {
            map.setPixel(x, y, qRgb(x & 0xFF, y & 0xFF, (x >> 8) * 16));
        }
    }
    Put(QStringLiteral("map"), map);
    Make().SetControlColorsToMatchSkin();
    auto at = [&](const QWidget* control) {
        const QPoint centre = SamplePoint(control->geometry());
        return QColor(map.pixel(centre));
    };
    for (const char* name : {"VertCursorBar", "HorizCursorBar"}) {
        EXPECT_EQ(Bar(name)->BackColor(), at(Bar(name))) << name;
    }
    for (const char* name : kButtons) {
        auto* button = form.control<ButtonControl1>(name);
        EXPECT_EQ(button->ButtonBackColor(), at(button)) << name;
        const bool filled = button->objectName().startsWith(QLatin1String("Trig"));
        EXPECT_EQ(button->ButtonFillColor() == at(button), filled) << name;
    }
    for (const char* name : kKnobs) {
        auto* knob = form.control<KnobControl1>(name);
        EXPECT_EQ(knob->KnobBorderColor(), at(knob)) << name;
        EXPECT_EQ(FromQColor(knob->KnobFillColor()), Brightened(FromQColor(at(knob)), 0x202020)) << name;
        EXPECT_EQ(knob->KnobFillColor(), ToQColor(skins->BrightenedSkinColour(*knob))) << name;
    }
    for (const char* name : kSliders) {
        auto* slider = form.control<SliderControl1>(name);
        EXPECT_EQ(slider->SliderFillColor(), at(slider)) << name;
    }
    // Known numbers beside the rule: a bar of 101 x 9 at (20, 150), ties to even.
    EXPECT_EQ(Bar("VertCursorBar")->BackColor(), QColor(70, 154, 0));
    EXPECT_EQ(skins->GetDIBPixel(300, 7), 0x10072CU);
}

TEST_F(Skins, ASkinOfAnotherSizeIsStretchedToTheForm) {
    QImage half(160, 100, QImage::Format_RGB32);
    half.fill(QColor(10, 20, 30));
    for (int x = 80; x < 160; ++x) {
        for (int y = 0; y < 100; ++y) {
            half.setPixel(x, y, qRgb(60, 50, 40));
        }
    }
    half.setPixel(159, 0, qRgb(255, 255, 192));
    Put(QStringLiteral("half"), half);
    Make().SetControlColorsToMatchSkin();
    EXPECT_EQ(dib.Width(), 320);
    EXPECT_EQ(dib.Height(), 200);
    EXPECT_EQ(skins->GetDIBPixel(159, 100), 0x1E140AU);
    EXPECT_EQ(skins->GetDIBPixel(160, 100), 0x28323CU);
    EXPECT_EQ(form.mask(), QRegion(0, 0, 320, 200) - QRegion(318, 0, 2, 2));
}

TEST_F(Skins, TheFormTakesTheOutlineOfThePicture) {
    const QImage face = toy::FacePicture(Qt::gray);
    Put(QStringLiteral("a"), face);
    Make().SetControlColorsToMatchSkin();
    EXPECT_TRUE(region.Applied(&form));
    EXPECT_EQ(region.AppliedToCount(), 1);
    ASSERT_FALSE(form.mask().isEmpty());
    for (int y = 0; y < face.height(); ++y) {
        for (int x = 0; x < face.width(); ++x) {
            ASSERT_EQ(form.mask().contains(QPoint(x, y)), QColor(face.pixel(x, y)) != ToQColor(kSkinKey));
        }
    }
}

TEST_F(Skins, AOneColourFaceShowsNothingOfItself) {
    Put(QStringLiteral("a"), bitmap::Plain(320, 200));
    Make().SetControlColorsToMatchSkin();
    ASSERT_NE(region.Region(), nullptr);
    EXPECT_TRUE(region.Region()->isEmpty());
    EXPECT_FALSE(form.mask().isEmpty()) << "an empty mask is no mask";
    EXPECT_TRUE((form.mask() & form.rect()).isEmpty());
}

TEST_F(Skins, ClicksCycleThroughTheList) {
    for (const char* name : {"a", "b", "c"}) {
        Put(QLatin1String(name), toy::FacePicture(QColor(name[0], 0, 0)));
    }
    Make();
    std::vector<int> indices;
    std::vector<Colour> faces;
    for (int i = 0; i < 4; ++i) {
        skins->SkinColourImage_Click();
        indices.push_back(skins->SkinIndex);
        faces.push_back(FaceAt(160, 100));
    }
    EXPECT_EQ(indices, (std::vector<int>{1, 2, 0, 1}));
    EXPECT_EQ(faces, (std::vector<Colour>{'b', 'c', 'a', 'b'}));
}

TEST_F(Skins, OneSkinIsLoadedAgainByAClick) {
    Put(QStringLiteral("a"), toy::FacePicture(QColor(1, 1, 1)));
    Make().SetControlColorsToMatchSkin();
    Put(QStringLiteral("a"), toy::FacePicture(QColor(2, 2, 2)));
    skins->SkinColourImage_Click();
    EXPECT_EQ(skins->SkinIndex, 0);
    EXPECT_EQ(FaceAt(160, 100), 0x020202U);
}

TEST_F(Skins, TheMouseClicksTheClicker) {
    Put(QStringLiteral("a"), toy::FacePicture(Qt::gray));
    Put(QStringLiteral("b"), toy::FacePicture(Qt::darkGray));
    Make();
    QTest::mouseClick(form.control<Picture>("SkinColourImage"), Qt::LeftButton);
    EXPECT_EQ(skins->SkinIndex, 1);
    // Let go outside: not a click.
    QTest::mousePress(form.control<Picture>("SkinColourImage"), Qt::LeftButton);
    QTest::mouseRelease(form.control<Picture>("SkinColourImage"), Qt::LeftButton, {}, QPoint(100, 5));
    EXPECT_EQ(skins->SkinIndex, 1);
}

TEST_F(Skins, AClickInsideAChangeIsIgnored) {
    Put(QStringLiteral("a"), toy::FacePicture(Qt::gray));
    Put(QStringLiteral("b"), toy::FacePicture(Qt::gray));
    Make();
    onEvents = [&] {
        skins->SkinColourImage_Click();
        skins->SetControlColorsToMatchSkin();
    };
    skins->SkinColourImage_Click();
    EXPECT_EQ(skins->SkinIndex, 1);
    EXPECT_EQ(steps.size(), 4);
}

TEST_F(Skins, ANegativeIndexKeepsThePictureAndColoursByIt) {
    Put(QStringLiteral("a"), toy::FacePicture(QColor(1, 2, 3)));
    Make();
    form.control<Picture>("Image1")->SetPicture(QPixmap::fromImage(toy::FacePicture(QColor(7, 8, 9))));
    skins->SkinIndex = -1;
    skins->SetControlColorsToMatchSkin();
    EXPECT_EQ(FaceAt(160, 100), 0x090807U);
    EXPECT_EQ(form.control<KnobControl1>("TriggerKnob")->KnobBorderColor(), QColor(7, 8, 9));
    skins->SkinColourImage_Click();
    EXPECT_EQ(skins->SkinIndex, 0);
    EXPECT_EQ(FaceAt(160, 100), 0x030201U);
}

TEST_F(LoggedSkins, EmptyListIsLoggedWithItsTwoLines) {
    Make().SetControlColorsToMatchSkin();
    EXPECT_EQ(book.Lines(), (QStringList{"Listing skins", ">>> main.SetControlColorsToMatchSkin()",
                                         "<<< main.SetControlColorsToMatchSkin"}));
}

TEST_F(LoggedSkins, AChangeLogsItsEntryAndTheShapingAndNoExit) {
    Put(QStringLiteral("a"), toy::FacePicture(Qt::gray));
    Make().SetControlColorsToMatchSkin();
    book.log.PrintLog(QStringLiteral("after"));
    const QStringList lines = book.Lines();
    EXPECT_EQ(lines.mid(0, 3), (QStringList{"Listing skins", ">>> main.SetControlColorsToMatchSkin()",
                                            "    >>> SetWindowEffects(i:Corvantine_Main.Image1)"}));
    EXPECT_EQ(lines.mid(lines.size() - 2), (QStringList{"    (< SetWindowEffects", "after"}));
    EXPECT_TRUE(lines.contains(QStringLiteral(
        "        >>> cDIBSection.CreateFromPictureStretchBlt(form_width: 320, form_height: 200)")));
    EXPECT_TRUE(lines.contains(QStringLiteral("        (< cDIBSectionRegion.Create")));
    EXPECT_TRUE(lines.contains(QStringLiteral("        (< cDIBSectionRegion.Applied")));
    EXPECT_FALSE(lines.contains(QStringLiteral("<<< main.SetControlColorsToMatchSkin")));
}

TEST_F(LoggedSkins, AFailedChangeLeavesNoIndentBehind) {
    Put(QStringLiteral("a"), QByteArray("junk"));
    Make().SetControlColorsToMatchSkin();
    EXPECT_EQ(book.log.Indent(), 0);
}

TEST_F(Skins, ARegionTakesAPanelsShapeFromItsPicture) {
    Form panel(toy::PanelDesign(QStringLiteral("Corvantine_Tab1"), 1));
    panel.control<Picture>("Image2")->SetPicture(QPixmap::fromImage(toy::PanelPicture(Qt::yellow, 1)));
    cDIBSectionRegion tab(book.log);
    EXPECT_TRUE(SetWindowEffects(book.log, dib, *panel.control<Picture>("Image2"), kSkinKey, tab));
    EXPECT_EQ(panel.mask(), QRegion(0, 0, 80, 160) | QRegion(80, 35, 20, 25));
}

TEST_F(Skins, APictureWithoutAFormIsNotShaped) {
    Picture alone;
    alone.resize(20, 20);
    alone.SetPicture(QPixmap::fromImage(toy::FacePicture(Qt::gray)));
    cDIBSectionRegion other(book.log);
    EXPECT_FALSE(SetWindowEffects(book.log, dib, alone, kSkinKey, other));
    EXPECT_EQ(other.Region(), nullptr);
}

} // namespace
