#pragma once

#include "driver/driver.h"
#include "frame/instrument/instrument.h"
#include "frame/record/record.h"

#include <QString>
#include <functional>
#include <memory>

/// The whole program in this process, but for main: on any driver, with a folder for its skins, settings and
/// log. No wait takes time.
class WholeInstrument {
  public:
    struct Surroundings {
        QString folder;
        std::function<void(const QString&)> show = [](const QString&) {}; ///< a message box
        std::function<void()> yield = {};                                 ///< else events are processed
        QString commandLine = {};
    };
    WholeInstrument(std::unique_ptr<DriverBackend> backend, Surroundings surroundings);
    ~WholeInstrument();

    void Start();
    /// The close of the program, to its end.
    void End();
    /// One tick of the run loop, then whatever it left to do.
    void Tick(int times = 1);
    /// A press and release of the left mouse button in the middle of a control, as from a hand.
    static void Click(QWidget& control);
    /// Whether two presses of RunButton stop the instrument and let it run again, or the other way round.
    bool PanelAnswers();

    Driver driver;
    Record record;
    Instrument instrument;
};

/// Lays a skin into the folder's skins: a face of one colour on the colour of the outside.
void WriteSkin(const QString& folder, const QString& name, QRgb colour);
