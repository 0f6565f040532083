#pragma once

#include "driver/driver.h"
#include "frame/log/show_message.h"

#include <QObject>

class Form;
class QListWidget;
struct Record;
class UserControl2;

/// The about panel after the start-up has filled it: a box for the module whose line was chosen, and the way
/// to the update page.
class AboutTab : public QObject {
    Q_OBJECT
  public:
    struct Controls {
        static Controls Of(const Form& tab);
        QListWidget* CorvantineList;
        UserControl2* WebLink;
    };
    struct Calls {
        ShowMessage Show;
    };

    /// folder: where update.url lies.
    AboutTab(const Record& record, Driver& driver, const Controls& controls, QString folder, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    void CorvantineList_Click();
    void WebLink_Click();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    const Record& record_;
    Driver& driver_;
    Controls controls_;
    QString folder_;
    Calls calls_;
    bool showing_ = false;
};
