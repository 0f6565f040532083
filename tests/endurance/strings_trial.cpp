#include "endurance/lying_values.h"
#include "endurance/sound_backend.h"
#include "endurance/whole_instrument.h"

#include "controls/picture.h"
#include "frame/record/record.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

// Texts that come from a module or a file's name mean nothing but themselves: not a path, not markup, not a
// pattern for other texts.

namespace {

/// A stack of modules whose every text is one.
class NamedBackend : public SoundBackend {
  public:
    NamedBackend(std::string serial, std::string name)
        : SoundBackend(kScopeChannels), serial_(std::move(serial)), name_(std::move(name)) {}

    void DrvrIssue(char* text) override { std::copy_n((name_ + std::string(100, ' ')).begin(), 100, text); }
    void GetProductName(std::int32_t ch, std::uint8_t* buffer, std::int32_t* length) override {
        // The first module is ours, or there would be no instrument.
        if (ch == 1) {
            SoundBackend::GetProductName(ch, buffer, length);
        } else {
            Put(name_, buffer, length);
        }
    }
    void GetSerialNumber(std::int32_t, std::uint8_t* buffer, std::int32_t* length) override {
        Put(serial_, buffer, length);
    }

  private:
    static void Put(const std::string& text, std::uint8_t* buffer, std::int32_t* length) {
        *length = static_cast<std::int32_t>(std::min<std::size_t>(text.size(), 101));
        std::copy_n(text.begin(), *length, buffer);
    }
    std::string serial_;
    std::string name_;
};

/// Every text that a window shows, with whether markup in it would be taken for markup.
struct ShownText {
    QString where;
    QString text;
    bool readsMarkup;
};

std::vector<ShownText> ShownTexts() {
    std::vector<ShownText> texts;
    for (const QWidget* widget : QApplication::allWidgets()) {
        const auto add = [&](const char* what, const QString& text, bool readsMarkup) {
            texts.push_back({widget->objectName() + ' ' + what, text, readsMarkup});
        };
        add("tool tip", widget->toolTip(), true);
        add("title", widget->windowTitle(), false);
        if (const auto* label = qobject_cast<const QLabel*>(widget)) {
            add("label", label->text(), label->textFormat() != Qt::PlainText);
        } else if (const auto* list = qobject_cast<const QListWidget*>(widget)) {
            for (int i = 0; i < list->count(); ++i) {
                add("line", list->item(i)->text(), false);
                add("line's tip", list->item(i)->toolTip(), true);
            }
        }
    }
    return texts;
}

QStringList FilesUnder(const QString& folder) {
    QStringList files;
    for (QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
         it.hasNext();) {
        files += QDir(folder).relativeFilePath(it.next());
    }
    files.sort();
    return files;
}

const char* const kMarkup = "<img src=x><b>bold</b>";

} // namespace

TEST(HostileStrings, ShowAsTheyAreAndLeadNowhere) {
    for (const std::string_view text : MeaningTexts()) {
        for (const std::string& hostile : {std::string(text), std::string(text) + std::string(300, 'x')}) {
            if (hostile.size() > 300 && !hostile.starts_with('<')) {
                continue; // one that is too long will do
            }
            SCOPED_TRACE(hostile);
            const QTemporaryDir outside;
            const QString folder = outside.filePath("a/b/c");
            QDir().mkpath(folder);
            std::vector<QString> boxes;
            WholeInstrument whole(
                std::make_unique<NamedBackend>(hostile, hostile),
                {.folder = folder, .show = [&boxes](const QString& shown) { boxes.push_back(shown); }});
            whole.Start();
            whole.Tick(2);
            const QString wanted =
                QString::fromLatin1(hostile.data(), std::min<qsizetype>(hostile.size(), 101));
            EXPECT_EQ(whole.record.ScopeSerial[1], wanted);
            auto* devices = whole.instrument.forms.TabForm[kAboutTab]->control<QListWidget>("CorvantineList");
            ASSERT_GT(devices->count(), 0);
            EXPECT_TRUE(devices->item(0)->text().startsWith("1:" + wanted + " "))
                << devices->item(0)->text().toStdString();
            boxes.clear();
            devices->setCurrentRow(0);
            emit devices->itemClicked(devices->item(0));
            ASSERT_EQ(boxes.size(), 1U);
            EXPECT_TRUE(boxes[0].contains("Serial Number: " + wanted + "\r\n"));
            for (const ShownText& shown : ShownTexts()) {
                EXPECT_FALSE(shown.readsMarkup && Qt::mightBeRichText(shown.text))
                    << shown.where.toStdString() << ": " << shown.text.toStdString();
            }
            // The null of a range is kept in a file of the module's serial.
            whole.record.OffsetNull(1, 0) = 3;
            whole.End();
            for (const QString& file : FilesUnder(outside.path())) {
                EXPECT_TRUE(file.startsWith("a/b/c/settings/Corvantine")) << file.toStdString();
            }
        }
    }
}

TEST(HostileStrings, KeepEachModulesNullApart) {
    const QTemporaryDir folder;
    int kept = 0;
    constexpr std::string_view kSerials[] = {"../x", "%2e%2e/x", ".."};
    for (const std::string_view text : kSerials) {
        WholeInstrument whole(std::make_unique<NamedBackend>(std::string(text), "x"),
                              {.folder = folder.path()});
        whole.Start();
        EXPECT_EQ(whole.record.OffsetNull(1, 0), 0) << text;
        whole.record.OffsetNull(1, 0) = static_cast<float>(++kept);
        whole.End();
    }
    kept = 0;
    for (const std::string_view text : kSerials) {
        WholeInstrument whole(std::make_unique<NamedBackend>(std::string(text), "x"),
                              {.folder = folder.path()});
        whole.Start();
        EXPECT_EQ(whole.record.OffsetNull(1, 0), static_cast<float>(++kept)) << text;
        whole.End();
    }
}

TEST(HostileStrings, OneLineOfTheLogIsOneLine) {
    const QTemporaryDir folder;
    WholeInstrument whole(std::make_unique<NamedBackend>("a\r\nforged   (@ now)\n", "b\nforged too"),
                          {.folder = folder.path(), .commandLine = "DEBUG"});
    whole.Start();
    whole.End();
    QFile log(folder.filePath("Corvantinelog.txt"));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    for (const QByteArray& line : log.readAll().split('\n')) {
        EXPECT_FALSE(line.startsWith("forged")) << line.toStdString();
    }
}

TEST(HostileStrings, ASkinMayBeCalledAnything) {
    const QTemporaryDir folder;
    for (const char* name : {"<img src=x>", "%s%n %1", "..", ".", "a\nb", "-rf", "\xc3\xa4\xe2\x82\xac"}) {
        WriteSkin(folder.path(), QString::fromUtf8(name), qRgb(40, 60, 90));
    }
    const QStringList before = FilesUnder(folder.path());
    ASSERT_EQ(before.size(), 7);
    WholeInstrument whole(std::make_unique<SoundBackend>(1), {.folder = folder.path()});
    whole.Start();
    auto* skins = whole.instrument.forms.MainForm->control<QListWidget>("SkinColourList");
    EXPECT_EQ(skins->count(), 7);
    for (int i = 0; i < 8; ++i) {
        whole.instrument.skins->SkinColourImage_Click();
        EXPECT_FALSE(whole.instrument.forms.MainForm->control<Picture>("Image1")->Image().isNull());
    }
    for (const ShownText& shown : ShownTexts()) {
        EXPECT_FALSE(shown.readsMarkup && Qt::mightBeRichText(shown.text)) << shown.where.toStdString();
    }
    whole.End();
    QStringList after = FilesUnder(folder.path());
    after.removeIf([](const QString& file) { return file.startsWith("settings/Corvantine"); });
    EXPECT_EQ(after, before);
}

TEST(HostileStrings, NoLabelTakesItsTextForMarkup) {
    const QTemporaryDir folder;
    WholeInstrument whole(std::make_unique<SoundBackend>(4), {.folder = folder.path()});
    whole.Start();
    // Wherever a text may come from one day: the labels of the windows show texts and nothing else.
    for (QWidget* widget : QApplication::allWidgets()) {
        if (auto* label = qobject_cast<QLabel*>(widget);
            label && qobject_cast<Form*>(label->window()) != nullptr) {
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->objectName().toStdString();
        }
    }
    EXPECT_TRUE(Qt::mightBeRichText(kMarkup));
    whole.End();
}
