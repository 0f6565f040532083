#include "frame/window/scope_settings.h"

#include "display/large_time_design.h"
#include "frame/record/record.h"
#include "frame/settings/settings_section.h"
#include "frame/window/forms.h"

#include <QWindow>
#include <cmath>
#include <utility>

namespace {

constexpr int kDefaultSkin = -1;
constexpr int kMostSkins = 10000;      ///< an index beyond that was never one of a list
constexpr double kFarthestEdge = 1e6;  ///< pixels; a place beyond that is a damaged text
constexpr double kSmallestSize = 16;   ///< of a window that a person can still find
constexpr double kLargestSize = 32767; ///< of a window, for the window system

/// A default is turned into the nearest whole pixel like a saved value.
int Pixels(double value, double least, double most, double fallback) {
    return static_cast<int>(std::lround(value >= least && value <= most ? value : fallback));
}

WindowPlace PlaceOf(Form& form) {
    return {.place = [&form] { return form.geometry(); },
            .put = [&form](const QRect& place) { form.setGeometry(place); }};
}

/// The main form's place is that of the face: the surface reaches further, to where the panels come out.
WindowPlace PlaceOf(Surface& surface, const Form& face) {
    return {.place = [&] { return QRect(QPoint(surface.Left(), surface.Top()), face.size()); },
            .put = [&](const QRect& place) { surface.MoveTo(place.left(), place.top()); }};
}

/// A child surface of the panel's window keeps the place that it has there: another panel's would leave it
/// anywhere. What is saved is where it stands if the panel does not move.
WindowPlace PlaceBeside(Form& form, Surface& surface) {
    return {.place = [&] { return form.geometry().translated(surface.pos()); }, .put = [](const QRect&) {}};
}

bool HeldByItsPanel(const Form& form) {
    return form.windowHandle() != nullptr && form.windowHandle()->parent() != nullptr;
}

} // namespace

ScopeSettings::Windows ScopeSettings::Windows::Of(Forms& forms) {
    Form& stats = *forms.StatsForm;
    return {.FFTForm = PlaceOf(*forms.FFTForm),
            .StatsForm = HeldByItsPanel(stats) ? PlaceBeside(stats, *forms.surface) : PlaceOf(stats),
            .FullScreenTimeForm = PlaceOf(*forms.FullScreenTimeForm),
            .MainForm = PlaceOf(*forms.surface, *forms.MainForm)};
}

/// The main form's section, and how the place of a window is read from it and written to it.
class ScopeSettings::Section : public SettingsSection {
  public:
    Section(SettingsStore& settings, const QString& suffix)
        : SettingsSection(settings, ScopeSection(suffix)) {}

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
        SaveInteger(window + QStringLiteral("Left"), place.left());
        SaveInteger(window + QStringLiteral("Top"), place.top());
    }
    void SaveSize(const QString& window, const QRect& place) {
        SaveInteger(window + QStringLiteral("Height"), place.height());
        SaveInteger(window + QStringLiteral("Width"), place.width());
    }

  private:
    int Edge(const QString& key, double fallback) {
        const double value = Real(key, fallback);
        return Pixels(value, -kFarthestEdge, kFarthestEdge, fallback);
    }
    int Size(const QString& key, double fallback) {
        const double value = Real(key, fallback);
        return Pixels(value, kSmallestSize, kLargestSize, fallback);
    }
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
                              QSizeF(screens.primary.width(), kLargeTimeHeight * screens.primary.height())));

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
    section.SaveInteger(QStringLiteral("SkinColour"), calls_.SkinIndex());
    calls_.SaveAcquisition();
    section.SaveBoolean(QStringLiteral("SampleDots"), record_.SampleDots);
    const QRect fft = windows_.FFTForm.place();
    section.SaveEdges(QStringLiteral("FFTWindow"), fft);
    section.SaveSize(QStringLiteral("FFTWindow"), fft);
    const QRect stats = windows_.StatsForm.place();
    section.SaveEdges(QStringLiteral("StatsWindow"), stats);
    const QRect time = windows_.FullScreenTimeForm.place();
    section.SaveEdges(QStringLiteral("FullScreenTimeWindow"), time);
    section.SaveSize(QStringLiteral("FullScreenTimeWindow"), time);
    section.SaveBoolean(QStringLiteral("FullScreenTimeWindowOn"), calls_.FullScreenOn());
    section.SaveSize(QStringLiteral("StatsWindow"), stats);
    section.SaveEdges(QStringLiteral("MainWindow"), windows_.MainForm.place());
}
