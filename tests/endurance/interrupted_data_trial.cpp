// A save of data is broken off at every point where it can be: the files that were finished are whole, and of
// the one that was being written there is a beginning.

#include "endurance/interruption.h"
#include "export/fixed_scales.h"
#include "export/output_files.h"
#include "export/save_data.h"
#include "frame/record/record.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <map>

namespace {

using Files = std::map<QString, QByteArray>;

class InterruptedData : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        record.SampleDepth = kSampleDepth;
        record.ScopeInUse.fill(true);
        for (int channel = 1; channel <= kAllChannels; ++channel) {
            for (int i = 0; i < kSampleRow; ++i) {
                record.SampleData(channel, i) = static_cast<float>(10 * channel + i % 3);
            }
        }
        request.base = folder.filePath(QStringLiteral("run"));
        request.selected = {true, true, true, false, false, false};
        request.window = QStringLiteral("Hamming");
        request.plotType = QStringLiteral("Linear Plot");
        request.samplePeriod = 2e-8F;
        request.stamp = {'.', QStringLiteral("today"), QStringLiteral("Corvantine")};
        ASSERT_TRUE(Save());
        whole = Found();
        ASSERT_GE(whole.size(), 3U);
        Clear();
    }
    bool Save() {
        OutputFiles files;
        return SaveData(request, record, scales.all, files);
    }
    Files Found() const {
        Files found;
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files, QDir::Name)) {
            QFile file(folder.filePath(name));
            EXPECT_TRUE(file.open(QIODevice::ReadOnly));
            found[name] = file.readAll();
        }
        return found;
    }
    void Clear() const {
        for (const QString& name : QDir(folder.path()).entryList(QDir::Files)) {
            QFile::remove(folder.filePath(name));
        }
    }
    /// All but one at most are whole, and that one is a beginning.
    void ExpectWholeButOne(const Files& found, int at) const {
        int begun = 0;
        for (const auto& [name, bytes] : found) {
            const auto complete = whole.find(name);
            ASSERT_NE(complete, whole.end()) << qPrintable(name);
            ASSERT_TRUE(complete->second.startsWith(bytes)) << qPrintable(name) << " at " << at;
            begun += bytes == complete->second ? 0 : 1;
        }
        EXPECT_LE(begun, 1) << at;
    }

    QTemporaryDir folder{FolderInMemory()};
    Record record;
    FixedScales scales;
    SaveRequest request;
    Files whole;
};

TEST_F(InterruptedData, AKillAtEachSystemCallLeavesFinishedFilesWhole) {
    int killed = 0;
    for (int call = 1;; ++call) {
        Clear();
        const Ending ending = KilledAtCall(call, [this] { Save(); });
        ASSERT_NE(ending, Ending::Failed) << "call " << call;
        const Files found = Found();
        ExpectWholeButOne(found, call);
        if (ending == Ending::Done) {
            EXPECT_EQ(found, whole);
            break;
        }
        ++killed;
    }
    EXPECT_GT(killed, 6);
    EXPECT_TRUE(Save()) << "into the folder that they left";
    EXPECT_EQ(Found(), whole);
}

TEST_F(InterruptedData, ADiskThatIsFullAfterEachByteCountFailsOnce) {
    constexpr long kStep = 1501;
    long longest = 0;
    for (const auto& file : whole) {
        longest = std::max(longest, static_cast<long>(file.second.size()));
    }
    for (long bytes = 0; bytes < longest; bytes += kStep) {
        Clear();
        EXPECT_EQ(OnAFullDisk(bytes, [this] { return Save() ? 0 : 1; }), 1) << bytes;
        ExpectWholeButOne(Found(), static_cast<int>(bytes));
    }
    Clear();
    EXPECT_EQ(OnAFullDisk(longest, [this] { return Save() ? 0 : 1; }), 0);
    EXPECT_EQ(Found(), whole);
}

} // namespace
