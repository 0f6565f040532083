#pragma once

#include "display/cursor_bar.h"

class Form;
struct Record;
class SettingsStore;

/// What the cursor tab remembers: which cursors are on, and where all six stand.
class CursorTab {
  public:
    struct Controls {
        PerCursor<QCheckBox*> VertCursorEn;
        PerCursor<QCheckBox*> HorizCursorEn;

        static Controls Of(const Form& tab);
    };

    CursorTab(Record& record, SettingsStore& settings, const Controls& controls);

    /// A time or a level that no cursor can have becomes the nearest that one can.
    void RestoreTabSettings();
    void Form_Unload();

  private:
    Record& record_;
    SettingsStore& settings_;
    Controls controls_;
};
