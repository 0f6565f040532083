#include "frame/window/scope_settings.h"

#include "frame/settings/setting_names.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings.h"

#include <cmath>
#include <utility>

namespace {

constexpr int kDefaultSkin = -1;
constexpr int kMostSkins = 10000;          ///< an index beyond that was never one of a list
constexpr double kFarthestEdge = 1e6;      ///< pixels; a place beyond that is a damaged text
constexpr double kSmallestSize = 16;       ///< of a window that a person can still find
constexpr double kLargestSize = 32767;     ///< of a window, for the window system
constexpr double kFullScreenHeight = 0.95; ///< of the screen: what a first large time window takes

/// A default is turned into the nearest whole pixel like a saved value.
int Pixels(double value, double least, double most, double fallback) {
    return static_cast<int>(std::lround(value >= least && value <= most ? value : fallback));
}

} // namespace

/// The main form's section, and how the place of a window is read from it and written to it.
class ScopeSettings::Section {
  public:
    Section(SettingsStore& settings, const QString& suffix)
        : settings_(settings), name_(ScopeSection(suffix)) {}

    std::int32_t Integer(const QString& key, std::int32_t fallback) {
        return settings_.GetInteger(SettingsApplication(), name_, key, fallback);
    }
    bool Boolean(const QString& key, bool fallback) {
        return settings_.GetBoolean(SettingsApplication(), name_, key, fallback);
    }
    void Save(const QString& key, const QString& text) {
        settings_.Save(SettingsApplication(), name_, key, text);
    }

    /// The two edges of the window, the size as it is.
    QRect Edges(const QString& window, QRect place) {
        place.moveLeft(Edge(window + QStringLiteral("Left"), place.left()));
        place.moveTop(Edge(window + QStringLiteral("Top"), place.top()));
        return place;
    }
    /// The edges and then height and width; size: the defaults of those.
    QRect Place(const QString& window, QRect place, QSizeF size) {
        place = Edges(window, place);
        place.setHeight(Size(window + QStringLiteral("Height"), size.height()));
        place.setWidth(Size(window + QStringLiteral("Width"), size.width()));
        return place;
    }
    void SaveEdges(const QString& window, const QRect& place) {
        Save(window + QStringLiteral("Left"), QString::number(place.left()));
        Save(window + QStringLiteral("Top"), QString::number(place.top()));
    }
    void SaveSize(const QString& window, const QRect& place) {
        Save(window + QStringLiteral("Height"), QString::number(place.height()));
        Save(window + QStringLiteral("Width"), QString::number(place.width()));
    }

  private:
    int Edge(const QString& key, double fallback) {
        const double value = settings_.GetReal(SettingsApplication(), name_, key, fallback);
        return Pixels(value, -kFarthestEdge, kFarthestEdge, fallback);
    }
    int Size(const QString& key, double fallback) {
        const double value = settings_.GetReal(SettingsApplication(), name_, key, fallback);
        return Pixels(value, kSmallestSize, kLargestSize, fallback);
    }

    SettingsStore& settings_;
    QString name_;
};

ScopeSettings::ScopeSettings(Record& record, SettingsStore& settings, Windows windows, Calls calls)
    : record_(record), settings_(settings), windows_(std::move(windows)), calls_(std::move(calls)) {}

void ScopeSettings::RestoreScopeSettings() {
    const ScreenPlaces screens = calls_.Screens();
    Section section(settings_, record_.SettingsSuffix);
    const auto putOnScreen = [&screens](const WindowPlace& window, QRect place) {
        place.moveTopLeft(BroughtOnScreens(place, screens));
        window.put(place);
    };
    RestoreSkin(section);
    if (calls_.Closing && calls_.Closing()) {
        return;
    }

    const QRect fft = windows_.FFTForm.place();
    putOnScreen(windows_.FFTForm, section.Place(QStringLiteral("FFTWindow"), fft, fft.size()));
    for (int pass = 0; pass < 2; ++pass) {
        putOnScreen(windows_.StatsForm,
                    section.Edges(QStringLiteral("StatsWindow"), windows_.StatsForm.place()));
    }
    putOnScreen(windows_.FullScreenTimeForm,
                section.Place(QStringLiteral("FullScreenTimeWindow"), windows_.FullScreenTimeForm.place(),
                              QSizeF(screens.primary.width(), kFullScreenHeight * screens.primary.height())));

    RestoreSampleDots(section);
    RestoreFullScreenOn(section);
    putOnScreen(windows_.MainForm, section.Edges(QStringLiteral("MainWindow"), windows_.MainForm.place()));
    calls_.RestoreAcquisition();
}

void ScopeSettings::RestoreSkin(Section& section) {
    const int index = section.Integer(QStringLiteral("SkinColour"), kDefaultSkin);
    calls_.SetSkinIndex(index >= 0 && index < kMostSkins ? index : kDefaultSkin);
    calls_.SetControlColorsToMatchSkin();
}

// A click turns the opposite over, so that one road paints the button and tells the rest.
void ScopeSettings::RestoreSampleDots(Section& section) {
    record_.SampleDots = !section.Boolean(QStringLiteral("SampleDots"), false);
    calls_.SampleDotsButton_Click();
}

void ScopeSettings::RestoreFullScreenOn(Section& section) {
    calls_.SetFullScreenOn(!section.Boolean(QStringLiteral("FullScreenTimeWindowOn"), false));
    calls_.FullScreenButton_Click();
}

void ScopeSettings::SaveScopeSettings() {
    Section section(settings_, record_.SettingsSuffix);
    section.Save(QStringLiteral("SkinColour"), QString::number(calls_.SkinIndex()));
    calls_.SaveAcquisition();
    section.Save(QStringLiteral("SampleDots"), BooleanText(record_.SampleDots));
    const QRect fft = windows_.FFTForm.place();
    section.SaveEdges(QStringLiteral("FFTWindow"), fft);
    section.SaveSize(QStringLiteral("FFTWindow"), fft);
    const QRect stats = windows_.StatsForm.place();
    section.SaveEdges(QStringLiteral("StatsWindow"), stats);
    const QRect time = windows_.FullScreenTimeForm.place();
    section.SaveEdges(QStringLiteral("FullScreenTimeWindow"), time);
    section.SaveSize(QStringLiteral("FullScreenTimeWindow"), time);
    section.Save(QStringLiteral("FullScreenTimeWindowOn"), BooleanText(calls_.FullScreenOn()));
    section.SaveSize(QStringLiteral("StatsWindow"), stats);
    section.SaveEdges(QStringLiteral("MainWindow"), windows_.MainForm.place());
}
