#pragma once

#include "frame/window/forms.h"

#include <QObject>
#include <functional>

struct Record;
class TabPanels;

/// The main window beyond the instrument: stacking, its window buttons, the satellites that follow it, the
/// guide and the identification timer.
class Shell : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> PlotNow;
        std::function<void()> Close;                           ///< ends the program
        std::function<void(int channel)> IDButton_Click;       ///< of that channel's tab
        std::function<void(const QString& file)> OpenDocument; ///< of the application's folder
    };

    Shell(Record& record, Forms& forms, TabPanels& panels, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    /// The measurement window never falls behind the panel.
    void SetDefaultLayering();
    void Form_Activate();

    void MinimiseButton_Click();
    void MinimiseMostlyButton_Click();
    void FullScreenButton_Click();
    void SampleDotsButton_Click();
    void UsersGuideButton_Click();
    void IDTimer_Timer();

    bool FullScreenOn = false;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Minimised();
    void AskedToClose(const QObject* window);
    void Minimise(bool largeTimeToo);

    Record& record_;
    Forms& forms_;
    TabPanels& panels_;
    Calls calls_;
};
