#pragma once

#include "frame/forms.h"

#include <QObject>
#include <functional>

class DebugLog;

/// The main window beyond the instrument: moving, stacking, its window buttons, the satellites that follow
/// it, the guide and the identification timer.
class Shell : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> Close;                     ///< ends the program
        std::function<void(int channel)> IDButton_Click; ///< of that channel's tab
        std::function<void(const QString& file)> OpenDocument;
    };

    Shell(Record& record, Forms& forms, Calls calls);

    /// The measurement window never falls behind the panel.
    void SetDefaultLayering();
    void Form_Activate();

    void NormaliseButton_Click();
    void MinimiseButton_Click();
    void MinimiseMostlyButton_Click();
    void FullScreenButton_Click();
    void SampleDotsButton_Click();
    void UsersGuideButton_Click();
    void IDTimer_Timer();

    /// Satellites that a minimise has parked come back to where they were. Called while the panel follows.
    void RestoreParkedWindows();

    bool FullScreenOn = false;

  private:
    struct Parked {
        Form* window = nullptr;
        bool minimised = false;
    };

    void Image1_MouseDown();
    void Minimise(std::initializer_list<int> satellites);

    Record& record_;
    Forms& forms_;
    Calls calls_;
    Indexed<Parked, 0, 2> parked_; ///< measurement, spectrum, large time window
};
