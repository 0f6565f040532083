#include "controls/button_control.h"
#include "controls/face_style.h"
#include "controls/symbol_font.h"
#include "driver/builtin_backend.h"
#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"
#include "frame/record/record.h"
#include "frame/session/start_up.h"
#include "window/real_mouse.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

constexpr int kPatience = 30000; ///< ms for anything that has to come true

/// The program in demonstration mode in a real window, saving as a person saves: with pointer and keys, the
/// dialog being the toolkit's.
class DataFilesWindow : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("xcb"));
        LoadSymbolFont();
        ApplyFaceStyle(*qApp);
        qputenv("HOME", QFile::encodeName(home.path()));
        ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("Documents")));
        driver = std::make_unique<Driver>(std::make_unique<BuiltinBackend>());
        Environment environment;
        environment.applicationFolder = QStringLiteral(APPLICATION_FOLDER);
        environment.settingsFolder = home.filePath(QStringLiteral("settings"));
        environment.show = [](const QString& text) { ADD_FAILURE() << qPrintable(text); };
        environment.sleep = [](int ms) { QThread::msleep(static_cast<unsigned long>(ms)); };
        environment.yield = [] { QApplication::processEvents(); };
        instrument = std::make_unique<Instrument>(record, *driver, std::move(environment));
        StartUp(*instrument);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(instrument->forms.surface.get(), kPatience));
        real_mouse::Click(*Panel().control<QWidget>("Image1"));
        ASSERT_TRUE(Until([&] { return InSight(Button()); }))
            << "the panel did not come out from under the face";
    }
    void TearDown() override { ShutDown(*instrument); }

    const Form& Panel() { return *instrument->forms.TabForm[kDataTab]; }
    ButtonControl1& Button() { return *Panel().control<ButtonControl1>("SaveDataButton"); }
    static bool InSight(const QWidget& widget) {
        return QApplication::widgetAt(widget.mapToGlobal(widget.rect().center())) == &widget;
    }
    template <class Condition> bool Until(Condition condition) {
        return QTest::qWaitFor(condition, kPatience);
    }

    /// What is done in the modal window of a kind once it has the keyboard.
    struct Answer {
        const char* kind;
        std::function<void(QWidget&)> look;
        QStringList keys; ///< xdotool's words
    };
    /// Clicks on the save button and answers what it opens, one window after the other. The instrument has
    /// to go on behind each of them.
    void Save(const std::vector<Answer>& answers) {
        real_mouse::Click(Button());
        for (const Answer& answer : answers) {
            QWidget* window = nullptr;
            ASSERT_TRUE(Until([&] {
                window = QApplication::activeModalWidget();
                return window != nullptr && window->inherits(answer.kind) && window->isActiveWindow();
            })) << answer.kind;
            const auto passes = instrument->acquisition.PassCount;
            EXPECT_TRUE(Until([&] { return instrument->acquisition.PassCount != passes; }));
            if (answer.look) {
                answer.look(*window);
            }
            real_mouse::Do(answer.keys);
        }
        EXPECT_TRUE(Until([] { return QApplication::activeModalWidget() == nullptr; }));
    }
    static QStringList Type(const QString& text) {
        return {QStringLiteral("key"),    QStringLiteral("ctrl+a"), QStringLiteral("type"),
                QStringLiteral("--args"), QStringLiteral("1"),      text};
    }
    static QStringList Key(const char* key) { return {QStringLiteral("key"), QString::fromLatin1(key)}; }
    QString InHome(const char* name) const { return home.filePath(QString::fromLatin1(name)); }
    std::vector<std::string> Files(const char* inFolder) const {
        std::vector<std::string> names;
        for (const QString& name : QDir(InHome(inFolder)).entryList(QDir::Files, QDir::Name)) {
            names.push_back(name.toStdString());
        }
        return names;
    }

    QTemporaryDir home;
    Record record;
    std::unique_ptr<Driver> driver;
    std::unique_ptr<Instrument> instrument;
};

} // namespace

TEST_F(DataFilesWindow, APersonSavesTwiceIntoTheSameFolder) {
    const QColor fill = Button().ButtonFillColor();
    Save({{.kind = "QFileDialog",
           .look =
               [this](QWidget& window) {
                   auto& dialog = dynamic_cast<QFileDialog&>(window);
                   EXPECT_EQ(dialog.windowTitle(),
                             QStringLiteral("Select the file to save to (channels saved to seprate files)"));
                   EXPECT_EQ(dialog.nameFilters(), QStringList({QStringLiteral("Excel Text Files (*.txt)"),
                                                                QStringLiteral("All Files (*.*)")}));
                   EXPECT_EQ(dialog.selectedNameFilter(), QStringLiteral("Excel Text Files (*.txt)"));
                   EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("CorvantineData"));
                   EXPECT_EQ(dialog.defaultSuffix(), QString());
                   EXPECT_EQ(dialog.directory().path(), InHome("Documents"));
               },
           .keys = Key("Return")}});
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("done"));
    EXPECT_THAT(Files("Documents"), ElementsAre("CorvantineData.ch1data.txt", "CorvantineData.ch2data.txt",
                                                "CorvantineData.ch3data.txt", "CorvantineData.ch4data.txt"));
    EXPECT_TRUE(Until([&] { return Button().ButtonCaption() == QStringLiteral("save"); }));
    EXPECT_EQ(Button().ButtonFillColor(), fill);

    ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("a.b")));
    for (int channel = 2; channel <= kScopeChannels; ++channel) {
        real_mouse::Click(*Panel().control<QWidget>("SaveCh", channel), {12, 14});
    }
    Save({{.kind = "QFileDialog", .look = {}, .keys = Type(InHome("a.b/run.1.txt")) + Key("Return")}});
    EXPECT_THAT(Files("a.b"), ElementsAre("run.ch1data.txt"));
    // Once more over the same file: nobody asks.
    Save({{.kind = "QFileDialog",
           .look =
               [this](QWidget& dialog) {
                   EXPECT_EQ(dynamic_cast<QFileDialog&>(dialog).directory().path(), InHome("a.b"));
               },
           .keys = Type(QStringLiteral("run.ch1data.txt")) + Key("Return")}});
    EXPECT_THAT(Files("a.b"), ElementsAre("run.ch1data.txt"));
    EXPECT_THAT(Files("Documents"), testing::SizeIs(4));
}

TEST_F(DataFilesWindow, ACancelledDialogLeavesEverything) {
    Save({{.kind = "QFileDialog", .look = {}, .keys = Key("Escape")}});
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    EXPECT_THAT(Files("Documents"), testing::IsEmpty());
}

TEST_F(DataFilesWindow, AFailureSaysSoAndTheProgramGoesOn) {
    const auto read = [](QWidget& window) {
        auto& box = dynamic_cast<QMessageBox&>(window);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.text(), SaveFailureText());
        EXPECT_EQ(box.windowTitle(), QApplication::applicationName());
    };
    Save({{.kind = "QFileDialog", .look = {}, .keys = Type(InHome("missing/run")) + Key("Return")},
          {.kind = "QMessageBox", .look = read, .keys = Key("Return")}});
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    EXPECT_FALSE(Panel().timer("DoneTimer")->isActive());
    Save({{.kind = "QFileDialog", .look = {}, .keys = Type(InHome("run")) + Key("Return")}});
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("done"));
}

TEST_F(DataFilesWindow, MathChannelsAndSpectraGoWithTheRest) {
    const Form& math = *instrument->forms.TabForm[kMathTab];
    math.control<QCheckBox>("MathChannelEn", 1)->click();
    emit math.control<ButtonControl1>("FFTButton", 0)->Click();
    ASSERT_TRUE(record.ChannelOn[5] && record.ChannelFFT[5]);
    ASSERT_TRUE(Until([&] { return instrument->forms.FFTForm->isVisible(); }));
    instrument->forms.FFTForm->move(0, 0); // away from the panel
    ASSERT_TRUE(Until([&] { return InSight(Button()); }));
    for (int channel = 1; channel <= 3; ++channel) {
        real_mouse::Click(*Panel().control<QWidget>("SaveCh", channel), {12, 14});
    }
    const auto failure = Answer{.kind = "QMessageBox", .look = {}, .keys = Key("Return")};
    const auto save = [this](const char* name) {
        return Answer{.kind = "QFileDialog", .look = {}, .keys = Type(InHome(name)) + Key("Return")};
    };
    // Nothing says what a linear spectrum of a math channel is in volts.
    math.control<QRadioButton>("FFTPlotType", 1)->setChecked(true);
    Save({save("Documents/one"), failure});
    EXPECT_THAT(Files("Documents"), ElementsAre("one.ch4data.txt", "one.ch5fft.txt", "one.math1data.txt"));
    EXPECT_EQ(QFileInfo(InHome("Documents/one.ch5fft.txt")).size(), 0);
    // In decibels it works, but for the file that was left open.
    math.control<QRadioButton>("FFTPlotType", 0)->setChecked(true);
    Save({save("Documents/one"), failure});
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("save"));
    Save({save("Documents/two")});
    EXPECT_EQ(Button().ButtonCaption(), QStringLiteral("done"));
    QFile spectrum(InHome("Documents/two.ch5fft.txt"));
    ASSERT_TRUE(spectrum.open(QIODevice::ReadOnly));
    const QByteArrayList lines = spectrum.readAll().split('\n');
    EXPECT_EQ(lines.size(), 1032 + 1);
    EXPECT_EQ(lines[1025], "FFT FOR CH: 5\r");
    EXPECT_EQ(lines[1029], "PLOT TYPE: dB(V) Plot\r");
}
