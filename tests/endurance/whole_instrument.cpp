#include "endurance/whole_instrument.h"

#include "controls/button_control.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QMouseEvent>
#include <utility>

namespace {

Environment EnvironmentOf(WholeInstrument::Surroundings surroundings) {
    Environment environment;
    environment.applicationFolder = surroundings.folder;
    environment.settingsFolder = QDir(surroundings.folder).filePath(QStringLiteral("settings"));
    environment.commandLine = surroundings.commandLine;
    environment.show = std::move(surroundings.show);
    environment.sleep = std::move(surroundings.sleep);
    environment.yield =
        surroundings.yield ? std::move(surroundings.yield) : [] { QCoreApplication::processEvents(); };
    return environment;
}

} // namespace

WholeInstrument::WholeInstrument(std::unique_ptr<DriverBackend> backend, Surroundings surroundings)
    : driver(std::move(backend)), instrument(record, driver, EnvironmentOf(std::move(surroundings))) {}

WholeInstrument::~WholeInstrument() = default;

void WholeInstrument::Start() {
    StartUp(instrument);
}

void WholeInstrument::End() {
    ShutDown(instrument);
    while (!instrument.closing.Served()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
}

void WholeInstrument::Tick(int times) {
    for (int i = 0; i < times; ++i) {
        instrument.runLoop->RunTimer_Timer();
        QCoreApplication::processEvents();
    }
}

void WholeInstrument::Click(QWidget& control) {
    const QPointF at(control.width() / 2.0, control.height() / 2.0);
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, at, control.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(&control, &event);
    }
}

bool WholeInstrument::PanelAnswers() {
    auto* button = instrument.forms.MainForm->control<ButtonControl1>("RunButton");
    const bool was = record.Running;
    Click(*button);
    const bool changed = record.Running != was;
    Click(*button);
    return changed && record.Running == was;
}

void WriteSkin(const QString& folder, const QString& name, QRgb colour) {
    const QSize face(656, 420);
    QDir(folder).mkpath(QStringLiteral("skins"));
    QImage skin(face, QImage::Format_RGB888);
    skin.fill(QColor(colour));
    skin.setPixelColor(face.width() - 1, 0, QColor(255, 255, 192)); // the outside
    skin.save(
        QDir(folder).filePath(QStringLiteral("skins/Corvantine_skin_") + name + QStringLiteral(".bmp")));
}
