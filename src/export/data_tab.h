#pragma once

#include "export/data_file.h"
#include "export/output_files.h"
#include "frame/record/channel_scale.h"
#include "frame/record/channels.h"

#include <QObject>
#include <functional>
#include <optional>

class ButtonControl1;
class Driver;
class Form;
class QCheckBox;
class QComboBox;
class QRadioButton;
class QTimer;
struct Record;
struct SaveRequest;

/// The data panel: saves what the instrument shows to text files, and tells on its button that it did.
class DataTab : public QObject {
    Q_OBJECT
  public:
    using Scales = PerChannel<const ChannelScale*>;
    struct Controls {
        PerScope<QCheckBox*> SaveCh;
        ButtonControl1* SaveDataButton;
        QTimer* DoneTimer;
        /// Of each math channel: the first operand, the operator, the second operand.
        Indexed<Indexed<QComboBox*, 0, 2>, 1, 2> MathCombo;
        QComboBox* FFTWindowCombo;
        Indexed<QRadioButton*, 0, 1> FFTPlotType;

        static Controls Of(const Form& dataTab, const Form& mathTab);
    };
    struct Calls {
        using Answer = std::function<void(std::optional<QString> file)>;
        /// Asks the user for a file, beginning in that folder (empty: wherever suits), and calls the answer
        /// once, now or later. Nothing: cancelled.
        std::function<void(const QString& folder, Answer answer)> AskForFile;
        std::function<void(const QString& text)> ShowFailure;
        /// What the files of a save beginning now have in common.
        std::function<FileStamp()> Stamp;
    };

    DataTab(Record& record, Driver& driver, const Controls& controls, const Scales& scales, Calls calls);

    /// Connects the handlers to the signals of their controls.
    void Connect();

    /// Does nothing while the dialog of another save is open.
    void SaveDataButton_Click();
    void DoneTimer_Timer();

  private:
    SaveRequest Request(const QString& base);
    void Save(const QString& given);
    void ShowDone();

    Record& record_;
    Driver& driver_;
    Controls controls_;
    Scales scales_;
    Calls calls_;
    OutputFiles files_;
    QString folder_; ///< of the last save
    bool asking_ = false;
};

/// What a failed save says.
QString SaveFailureText();
