#include "frame/window/scope_settings.h"

#include "frame/record/record.h"
#include "frame/settings/settings.h"

#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

/// Writes down what is asked of it and in which order.
class RecordingStore : public SettingsStore {
  public:
    RecordingStore(const QString& folder, QStringList& calls) : SettingsStore(folder), calls_(calls) {}

    QString Get(const QString& application, const QString& section, const QString& key,
                const QString& fallback) override {
        calls_ += QStringLiteral("get ") + key;
        sections += application + QLatin1Char('/') + section;
        return SettingsStore::Get(application, section, key, fallback);
    }
    void Save(const QString& application, const QString& section, const QString& key,
              const QString& text) override {
        calls_ += key + QLatin1Char('=') + text;
        sections += application + QLatin1Char('/') + section;
        SettingsStore::Save(application, section, key, text);
    }
    QStringList sections;

  private:
    QStringList& calls_;
};

QString Text(const QRect& r) {
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

class ScopeSettingsTest : public testing::Test {
  protected:
    static constexpr QRect kScreen{0, 0, 1920, 1080};

    WindowPlace window(const char* name, QRect& place) {
        return {[&place] { return place; },
                [this, name, &place](const QRect& at) {
                    place = at;
                    calls_ += QString::fromLatin1(name) + QLatin1Char(' ') + Text(at);
                }};
    }
    auto note(const char* name) {
        return [this, name] { calls_ += QString::fromLatin1(name); };
    }
    ScopeSettings make() {
        ScopeSettings::Calls calls;
        calls.Screens = [this] { return screens_; };
        calls.SkinIndex = [this] { return skin_; };
        calls.SetSkinIndex = [this](int index) { skin_ = index; };
        calls.SetControlColorsToMatchSkin = note("SetControlColorsToMatchSkin");
        calls.FullScreenOn = [this] { return fullScreen_; };
        calls.SetFullScreenOn = [this](bool on) { fullScreen_ = on; };
        calls.FullScreenButton_Click = [this] {
            fullScreen_ = !fullScreen_;
            calls_ += QStringLiteral("FullScreenButton_Click");
        };
        calls.SampleDotsButton_Click = [this] {
            record_.SampleDots = !record_.SampleDots;
            calls_ += QStringLiteral("SampleDotsButton_Click");
        };
        calls.RestoreAcquisition = note("RestoreAcquisition");
        calls.SaveAcquisition = note("SaveAcquisition");
        return ScopeSettings(
            record_, store_,
            {window("fft", fft_), window("stats", stats_), window("time", time_), window("main", main_)},
            std::move(calls));
    }
    void save(const char* key, const QString& text) {
        store_.SettingsStore::Save("Corvantine", "ScopeSettings" + record_.SettingsSuffix, key, text);
    }
    void restore() { make().RestoreScopeSettings(); }

    QStringList calls_;
    QTemporaryDir folder_;
    RecordingStore store_{folder_.path(), calls_};
    Record record_;
    ScreenPlaces screens_{.all = {kScreen}, .primary = kScreen, .available = kScreen};
    int skin_ = 99;
    bool fullScreen_ = true;
    QRect fft_{100, 110, 400, 300};
    QRect stats_{200, 210, 150, 90};
    QRect time_{5, 6, 700, 500};
    QRect main_{300, 310, 600, 450};
};

} // namespace

TEST(BroughtOnScreen, TakesAnEdgeOutsideToZero) {
    const QSize screen(1000, 800);
    EXPECT_EQ(BroughtOnScreen({10, 20, 100, 100}, screen), QPoint(10, 20));
    EXPECT_EQ(BroughtOnScreen({-1, -500, 100, 100}, screen), QPoint(0, 0));
    EXPECT_EQ(BroughtOnScreen({900, 700, 100, 100}, screen), QPoint(900, 700));
    EXPECT_EQ(BroughtOnScreen({901, 700, 100, 100}, screen), QPoint(0, 700));
    EXPECT_EQ(BroughtOnScreen({900, 701, 100, 100}, screen), QPoint(900, 0));
    EXPECT_EQ(BroughtOnScreen({10, 20, 2000, 2000}, screen), QPoint(0, 0));
}

TEST(BroughtOnScreens, WithOneScreenTakesAnEdgeOutsideToZero) {
    const QRect screen(0, 0, 1000, 800);
    const ScreenPlaces one{.all = {screen}, .primary = screen, .available = screen.adjusted(0, 24, 0, 0)};
    EXPECT_EQ(BroughtOnScreens({-1, 20, 100, 100}, one), QPoint(0, 20));
    EXPECT_EQ(BroughtOnScreens({901, 20, 100, 100}, one), QPoint(0, 20));
    EXPECT_EQ(BroughtOnScreens({900, 700, 100, 100}, one), QPoint(900, 700));
}

TEST(BroughtOnScreens, ACornerOnAnyScreenCounts) {
    // The primary on the right, a smaller one on its left, with a panel on top of the primary.
    const QRect left(0, 200, 800, 600);
    const QRect primary(800, 0, 1000, 800);
    const ScreenPlaces two{
        .all = {primary, left}, .primary = primary, .available = primary.adjusted(0, 24, 0, 0)};
    const auto stays = [&two](const QRect& window) {
        return BroughtOnScreens(window, two) == window.topLeft();
    };
    EXPECT_TRUE(stays({100, 300, 200, 100}));
    EXPECT_TRUE(stays({900, 10, 200, 100}));
    EXPECT_TRUE(stays({700, 300, 200, 100})) << "over the edge between them";
    // Each corner, with exactly its 48 pixels on a screen, and with one less.
    EXPECT_TRUE(stays({1752, 752, 200, 100}));
    EXPECT_FALSE(stays({1753, 752, 200, 100}));
    EXPECT_FALSE(stays({1752, 753, 200, 100}));
    EXPECT_TRUE(stays({-152, 752, 200, 100}));
    EXPECT_FALSE(stays({-153, 752, 200, 100}));
    EXPECT_TRUE(stays({-152, 148, 200, 100}));
    EXPECT_FALSE(stays({-152, 147, 200, 100})) << "above the smaller screen there is nothing";
    EXPECT_TRUE(stays({1752, -52, 200, 100}));
    EXPECT_FALSE(stays({1752, -53, 200, 100}));
    EXPECT_FALSE(stays({760, -60, 80, 900})) << "its edges only, no corner";
    EXPECT_TRUE(stays({1780, 780, 20, 20})) << "a window smaller than a corner";
    EXPECT_FALSE(stays({1781, 780, 20, 20}));
}

TEST(BroughtOnScreens, AnyOtherPlaceComesToThePrimarysAvailableArea) {
    const QRect left(0, 0, 800, 600);
    const QRect primary(800, 0, 1000, 800);
    const ScreenPlaces two{
        .all = {primary, left}, .primary = primary, .available = primary.adjusted(0, 24, 0, 0)};
    EXPECT_EQ(BroughtOnScreens({5000, 300, 200, 100}, two), QPoint(1600, 300));
    EXPECT_EQ(BroughtOnScreens({-900, -900, 200, 100}, two), QPoint(800, 24));
    EXPECT_EQ(BroughtOnScreens({2000, 2000, 5000, 5000}, two), QPoint(800, 24)) << "larger than the room";
}

TEST_F(ScopeSettingsTest, ComesBackToASecondScreenAndLeavesOneThatIsGone) {
    screens_.all.push_back({1920, 0, 1280, 1024});
    save("MainWindowLeft", "2100");
    save("MainWindowTop", "40");
    save("StatsWindowLeft", "3180");
    save("StatsWindowTop", "900");
    restore();
    EXPECT_EQ(main_.topLeft(), QPoint(2100, 40));
    EXPECT_EQ(stats_.topLeft(), QPoint(1920 - 150, 900)) << "fewer than 48 pixels of it were in view";
    screens_.all.pop_back();
    restore();
    EXPECT_EQ(main_.topLeft(), QPoint(0, 40));
}

TEST_F(ScopeSettingsTest, RestoresInOrderFromAnEmptyStore) {
    record_.SampleDots = true; // not the default
    restore();
    EXPECT_EQ(calls_, QStringList({"get SkinColour",
                                   "SetControlColorsToMatchSkin",
                                   "get FFTWindowLeft",
                                   "get FFTWindowTop",
                                   "get FFTWindowHeight",
                                   "get FFTWindowWidth",
                                   "fft 100,110 400x300",
                                   "get StatsWindowLeft",
                                   "get StatsWindowTop",
                                   "stats 200,210 150x90",
                                   "get StatsWindowLeft",
                                   "get StatsWindowTop",
                                   "stats 200,210 150x90",
                                   "get FullScreenTimeWindowLeft",
                                   "get FullScreenTimeWindowTop",
                                   "get FullScreenTimeWindowHeight",
                                   "get FullScreenTimeWindowWidth",
                                   "time 0,6 1920x1026",
                                   "get SampleDots",
                                   "SampleDotsButton_Click",
                                   "get FullScreenTimeWindowOn",
                                   "FullScreenButton_Click",
                                   "get MainWindowLeft",
                                   "get MainWindowTop",
                                   "main 300,310 600x450",
                                   "RestoreAcquisition"}));
    EXPECT_EQ(skin_, -1);
    EXPECT_FALSE(record_.SampleDots);
    EXPECT_FALSE(fullScreen_);
    EXPECT_EQ(store_.sections.count(store_.sections.front()), store_.sections.size());
    EXPECT_EQ(store_.sections.front(), "Corvantine/ScopeSettings");
}

TEST_F(ScopeSettingsTest, SavesInItsOwnOrder) {
    skin_ = 3;
    record_.SampleDots = true;
    make().SaveScopeSettings();
    EXPECT_EQ(calls_, QStringList({"SkinColour=3", "SaveAcquisition", "SampleDots=True", "FFTWindowLeft=100",
                                   "FFTWindowTop=110", "FFTWindowHeight=300", "FFTWindowWidth=400",
                                   "StatsWindowLeft=200", "StatsWindowTop=210", "FullScreenTimeWindowLeft=5",
                                   "FullScreenTimeWindowTop=6", "FullScreenTimeWindowHeight=500",
                                   "FullScreenTimeWindowWidth=700", "FullScreenTimeWindowOn=True",
                                   "StatsWindowHeight=90", "StatsWindowWidth=150", "MainWindowLeft=300",
                                   "MainWindowTop=310"}));
}

TEST_F(ScopeSettingsTest, AForcedInstanceKeepsItsOwnSection) {
    record_.SettingsSuffix = QStringLiteral("_5:2");
    restore();
    make().SaveScopeSettings();
    for (const QString& section : store_.sections) {
        EXPECT_EQ(section, "Corvantine/ScopeSettings_5:2");
    }
}

TEST_F(ScopeSettingsTest, ComesBackAsItWasSaved) {
    record_.SampleDots = true;
    skin_ = 2;
    const QRect fft = fft_;
    const QRect time = time_;
    make().SaveScopeSettings();
    fft_ = QRect(0, 0, 50, 50);
    time_ = fft_;
    stats_.moveTo(0, 0);
    main_.moveTo(0, 0);
    fullScreen_ = false;
    record_.SampleDots = false;
    skin_ = 0;
    restore();
    EXPECT_EQ(fft_, fft);
    EXPECT_EQ(time_, time);
    EXPECT_EQ(stats_, QRect(200, 210, 150, 90));
    EXPECT_EQ(main_, QRect(300, 310, 600, 450));
    EXPECT_TRUE(fullScreen_);
    EXPECT_TRUE(record_.SampleDots);
    EXPECT_EQ(skin_, 2);
}

TEST_F(ScopeSettingsTest, TakesNoPlaceThatHidesAWindow) {
    save("MainWindowLeft", "5000");
    save("MainWindowTop", "-3");
    save("FFTWindowWidth", "0");
    save("FFTWindowHeight", "-20");
    save("FFTWindowLeft", "1e300");
    save("StatsWindowLeft", "garbage");
    save("StatsWindowTop", "1000000000000");
    save("FullScreenTimeWindowWidth", "40000");
    restore();
    EXPECT_EQ(main_.topLeft(), QPoint(0, 0));
    EXPECT_EQ(fft_, QRect(100, 110, 400, 300));
    EXPECT_EQ(stats_, QRect(200, 210, 150, 90));
    EXPECT_EQ(time_.width(), kScreen.width());
}

TEST_F(ScopeSettingsTest, ReadsRealPlacesOfAnotherLocale) {
    save("MainWindowLeft", "12.6");
    save("MainWindowTop", "33,2");
    restore();
    EXPECT_EQ(main_.topLeft(), QPoint(13, 33));
}

TEST_F(ScopeSettingsTest, TakesNoSkinThatNoListCanHold) {
    for (const char* text : {"-2", "2147483647", "red", "1e9"}) {
        save("SkinColour", text);
        restore();
        EXPECT_EQ(skin_, -1) << text;
    }
    save("SkinColour", "4");
    restore();
    EXPECT_EQ(skin_, 4);
}
