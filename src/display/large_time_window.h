#pragma once

#include "controls/form.h"
#include "frame/record/channels.h"

#include <QObject>
#include <functional>

class KnobControl1;
struct Record;

/// The time plot once more, as large as the screen allows, with the settings as text below it.
class LargeTimeWindow : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        KnobControl1* TimeBaseKnob;
        PerScope<KnobControl1*> VoltsKnob;

        static Controls Of(const Form& main, const ChannelForms& channels);
    };
    struct Calls {
        std::function<void()> PlotNow;
        std::function<QString()> MakeDataStamp;
    };

    LargeTimeWindow(Form& form, Record& record, const Controls& controls, Calls calls);

    /// What the instrument is set to: timebase, and the range of each channel that shows.
    QString Settings() const;
    void RedrawSettings();
    void RefreshAppInfo();

  private:
    void Form_Resize();
    void Canvas_DblClick();

    Form& form_;
    Record& record_;
    Controls controls_;
    Calls calls_;
};
