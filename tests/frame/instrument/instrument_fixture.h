#pragma once

#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "support/scripted_driver.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// The whole instrument on a scripted stack, off screen, in a folder and with settings of its own.
class InstrumentTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }

    void Prepare(int modules, const char* commandLine = "") {
        instrument.reset();
        scripted = std::make_unique<ScriptedInstrument>(modules, ScriptedInstrument::State::BeforeStartUp);
        record = std::make_unique<Record>();
        Environment environment;
        environment.applicationFolder = folder.path();
        environment.settingsFolder = folder.filePath(QStringLiteral("settings"));
        environment.commandLine = QString::fromLatin1(commandLine);
        environment.show = [this](const QString& text) {
            shown.push_back(text);
            if (onShow) {
                onShow();
            }
        };
        environment.sleep = [](int) {};
        environment.yield = [this] {
            QApplication::processEvents();
            if (onYield) {
                onYield();
            }
        };
        instrument = std::make_unique<Instrument>(*record, scripted->driver, std::move(environment));
    }
    void Start(int modules, const char* commandLine = "") {
        Prepare(modules, commandLine);
        StartUp(*instrument);
    }
    ScriptedDriver& script() { return scripted->script; }
    QString LabelText(const Form* form, const char* name, int index = -1) const {
        return form->control<QLabel>(name, index)->text();
    }
    QString Log() const {
        QFile file(folder.filePath(QStringLiteral("Corvantinelog.txt")));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    QTemporaryDir folder;
    std::vector<QString> shown;
    std::function<void()> onShow, onYield; ///< what happens while a box is shown, while events run
    std::unique_ptr<ScriptedInstrument> scripted;
    std::unique_ptr<Record> record;
    std::unique_ptr<Instrument> instrument;
};
