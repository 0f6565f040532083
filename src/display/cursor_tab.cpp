#include "display/cursor_tab.h"

#include "controls/form.h"
#include "display/cursor_arithmetic.h"
#include "frame/record/record.h"
#include "frame/settings/setting_text.h"
#include "frame/settings/settings_section.h"

#include <QCheckBox>
#include <algorithm>

namespace {

constexpr double kLongestRecord = 1e3; ///< seconds; well over the slowest timebase
constexpr double kHighestLevel = kLevelSpan / 2;

/// The boxes and values of three cursors under the keys "<axis>CursorEn0".. and "<axis>Cursor0"...
struct Group {
    const char* axis;
    const PerCursor<QCheckBox*>& boxes;
    PerCursor<double>& values;
    double least;
    double most;

    QString BoxKey(int cursor) const {
        return QStringLiteral("%1CursorEn%2").arg(QLatin1String(axis)).arg(cursor);
    }
    QString ValueKey(int cursor) const {
        return QStringLiteral("%1Cursor%2").arg(QLatin1String(axis)).arg(cursor);
    }
};

Group Times(Record& record, const CursorTab::Controls& controls) {
    return {"Vert", controls.VertCursorEn, record.VertCursorTime, 0, kLongestRecord};
}

Group Levels(Record& record, const CursorTab::Controls& controls) {
    return {"Horiz", controls.HorizCursorEn, record.HorizCursorVolts, -kHighestLevel, kHighestLevel};
}

} // namespace

CursorTab::Controls CursorTab::Controls::Of(const Form& tab) {
    Controls controls;
    for (int i = 0; i < kCursors; ++i) {
        controls.VertCursorEn[i] = tab.control<QCheckBox>("VertCursorEn", i);
        controls.HorizCursorEn[i] = tab.control<QCheckBox>("HorizCursorEn", i);
    }
    return controls;
}

CursorTab::CursorTab(Record& record, SettingsStore& settings, const Controls& controls)
    : record_(record), settings_(settings), controls_(controls) {}

void CursorTab::RestoreTabSettings() {
    const SettingsSection section(settings_, CursTabSection(record_.SettingsSuffix));
    for (const Group& group : {Times(record_, controls_), Levels(record_, controls_)}) {
        for (int i = 0; i < kCursors; ++i) {
            // The value first: a box that changes shows it.
            const QString text = section.Text(group.ValueKey(i), QStringLiteral("0"));
            group.values[i] = std::clamp(ParseLocaleDouble(text), group.least, group.most);
            group.boxes[i]->setChecked(section.Integer(group.BoxKey(i), 0) != 0);
        }
    }
}

void CursorTab::Form_Unload() {
    const SettingsSection section(settings_, CursTabSection(record_.SettingsSuffix));
    for (const Group& group : {Times(record_, controls_), Levels(record_, controls_)}) {
        for (int i = 0; i < kCursors; ++i) {
            section.SaveInteger(group.BoxKey(i), group.boxes[i]->isChecked() ? 1 : 0);
            section.Save(group.ValueKey(i), SeparatedRealText(group.values[i]));
        }
    }
}
