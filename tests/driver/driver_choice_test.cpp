#include "driver/driver_choice.h"

#include "driver/builtin_backend.h"
#include "driver/driver.h"
#include "driver/library_backend.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstring>
#include <dlfcn.h>
#include <sys/stat.h>

extern "C" std::int32_t header_in_c_sizes(std::int32_t which);

namespace {

std::string Failure(const DriverChoice& choice) {
    return choice.failure.toStdString();
}

bool IsBuiltIn(const DriverChoice& choice) {
    return dynamic_cast<BuiltinBackend*>(choice.backend.get()) != nullptr;
}

class DriverChoiceTest : public testing::Test {
  protected:
    QString Write(const QString& name, const QByteArray& content) {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    QTemporaryDir folder;
};

TEST_F(DriverChoiceTest, BuiltInWithoutALibrary) {
    const DriverChoice choice = ChooseDriver({}, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_TRUE(choice.failure.isEmpty());
    EXPECT_TRUE(choice.library.isEmpty());
}

TEST_F(DriverChoiceTest, LibraryBesideTheProgram) {
    ASSERT_TRUE(QFile::copy(CORVANTINE_MINIMAL_DRIVER, DriverBesideProgram(folder.path())));
    const DriverChoice choice = ChooseDriver({}, folder.path());
    EXPECT_EQ(Failure(choice), "");
    EXPECT_EQ(choice.library, DriverBesideProgram(folder.path()));
    EXPECT_EQ(choice.backend->OpenDrvr(), 4711);
}

TEST_F(DriverChoiceTest, ADemonstrationCanBeAskedForBesideADriver) {
    ASSERT_TRUE(QFile::copy(CORVANTINE_MINIMAL_DRIVER, DriverBesideProgram(folder.path())));
    const DriverChoice choice = ChooseDriver("demonstration", folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_EQ(Failure(choice), "");
    EXPECT_TRUE(choice.library.isEmpty());
}

TEST_F(DriverChoiceTest, NamedLibraryComesFirst) {
    Write(QFileInfo(DriverBesideProgram(folder.path())).fileName(), "not looked at");
    const DriverChoice choice = ChooseDriver(CORVANTINE_MINIMAL_DRIVER, folder.path());
    EXPECT_EQ(Failure(choice), "");
    EXPECT_EQ(choice.backend->OpenDrvr(), 4711);
}

TEST_F(DriverChoiceTest, NamedByARelativePath) {
    const QString relative = QDir::current().relativeFilePath(CORVANTINE_MINIMAL_DRIVER);
    EXPECT_EQ(Failure(ChooseDriver(relative, folder.path())), "");
}

TEST_F(DriverChoiceTest, NamedByABareNameInTheCurrentFolder) {
    ASSERT_TRUE(QFile::copy(CORVANTINE_MINIMAL_DRIVER, folder.filePath("bare.so")));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.path()));
    const DriverChoice choice = ChooseDriver("bare.so", "/");
    QDir::setCurrent(before);
    EXPECT_EQ(Failure(choice), "");
    EXPECT_EQ(choice.backend->OpenDrvr(), 4711);
}

TEST_F(DriverChoiceTest, NoOtherFolderIsSearched) {
    // A bare name that the system's loader would find.
    const DriverChoice choice = ChooseDriver("libc.so.6", folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_THAT(Failure(choice), testing::HasSubstr("no such file"));
}

TEST_F(DriverChoiceTest, MissingFile) {
    const QString path = folder.filePath("nothing.so");
    const DriverChoice choice = ChooseDriver(path, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_EQ(Failure(choice), "The driver library\n" + path.toStdString() +
                                   "\ncannot be used: there is no such file.\n"
                                   "Using the built-in driver instead.");
}

TEST_F(DriverChoiceTest, ANamedLibraryThatFailsIsNotReplacedByTheOneBeside) {
    ASSERT_TRUE(QFile::copy(CORVANTINE_MINIMAL_DRIVER, DriverBesideProgram(folder.path())));
    EXPECT_TRUE(IsBuiltIn(ChooseDriver(folder.filePath("nothing.so"), folder.path())));
}

TEST_F(DriverChoiceTest, TextFile) {
    const QString path = Write("text.so", "this is no library, just a text that is long enough\n");
    const DriverChoice choice = ChooseDriver(path, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_EQ(choice.failure.count(path), 1);
    EXPECT_THAT(Failure(choice),
                testing::MatchesRegex("The driver library\n.*\ncannot be used: .*(too short|ELF).*\\.\n"
                                      "Using the built-in driver instead\\."));
}

TEST_F(DriverChoiceTest, EmptyFileAndFolder) {
    EXPECT_TRUE(IsBuiltIn(ChooseDriver(Write("empty.so", {}), folder.path())));
    const DriverChoice choice = ChooseDriver(folder.path(), folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_FALSE(choice.failure.isEmpty());
}

TEST_F(DriverChoiceTest, APipeDoesNotBlock) {
    const QString pipe = folder.filePath("pipe.so");
    ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
    const DriverChoice choice = ChooseDriver(pipe, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_EQ(Failure(choice), "The driver library\n" + pipe.toStdString() +
                                   "\ncannot be used: it is no file.\nUsing the built-in driver instead.");
}

TEST_F(DriverChoiceTest, OneExportMissing) {
    const DriverChoice choice = ChooseDriver(CORVANTINE_DRIVER_WITHOUT_LED, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_EQ(Failure(choice), "The driver library\n" CORVANTINE_DRIVER_WITHOUT_LED
                               "\ncannot be used: it lacks the export CorvantineDrvr_SetLEDMode.\n"
                               "Using the built-in driver instead.");
}

TEST_F(DriverChoiceTest, ALibraryThatLacksAnExportStaysLoaded) {
    const QString path = folder.filePath("lacking.so");
    ASSERT_TRUE(QFile::copy(CORVANTINE_DRIVER_WITHOUT_LED, path));
    const auto loaded = [&] {
        void* library = dlopen(qPrintable(path), RTLD_LAZY | RTLD_NOLOAD);
        if (library != nullptr) {
            dlclose(library);
        }
        return library != nullptr;
    };
    ASSERT_FALSE(loaded());
    EXPECT_TRUE(IsBuiltIn(ChooseDriver(path, folder.path())));
    EXPECT_TRUE(loaded());
}

TEST_F(DriverChoiceTest, ForeignLibraryLacksThemAll) {
    const DriverChoice choice = ChooseDriver(CORVANTINE_FOREIGN_LIBRARY, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_THAT(Failure(choice), testing::HasSubstr("it lacks the exports CorvantineDrvr_OpenDrvr, "
                                                    "CorvantineDrvr_GetSampleDepth, "
                                                    "CorvantineDrvr_DrvrIssue and 43 more."));
}

TEST_F(DriverChoiceTest, LibraryWithAHoleOfItsOwnIsFoundOutAtLoad) {
    const DriverChoice choice = ChooseDriver(CORVANTINE_DRIVER_WITH_HOLE, folder.path());
    EXPECT_TRUE(IsBuiltIn(choice));
    EXPECT_THAT(Failure(choice), testing::HasSubstr("corvantine_test_defined_nowhere"));
}

TEST_F(DriverChoiceTest, EnvironmentNamesTheLibrary) {
    qunsetenv("CORVANTINE_DRIVER");
    EXPECT_TRUE(NamedDriver().isEmpty());
    qputenv("CORVANTINE_DRIVER", "/some/where.so");
    EXPECT_EQ(NamedDriver(), "/some/where.so");
    qunsetenv("CORVANTINE_DRIVER");
}

TEST(LibraryBackend, PassesEveryOperationToItsExport) {
    Driver driver(LibraryBackend::Load(CORVANTINE_MINIMAL_DRIVER).backend);
    EXPECT_EQ(driver.OpenDrvr(), 4711);
    EXPECT_EQ(driver.DrvrIssue(), "minimal 1");
    std::int32_t port = -2;
    std::int32_t channel = -2;
    EXPECT_EQ(driver.Enumerate(port, channel), 1);
    EXPECT_EQ(driver.GetProductName(1), "Corvantine");
    EXPECT_EQ(driver.GetProductName(2), "");
    EXPECT_EQ(driver.GetSerialNumber(1), "C0001");
    EXPECT_EQ(driver.GetHWRev(3), 0x23);
    EXPECT_EQ(driver.GetPortNumber(3), 6);
    EXPECT_EQ(driver.GetControllerRev(3), 0x33);
    EXPECT_TRUE(driver.OpenAndReset(1));
    EXPECT_FALSE(driver.OpenAndReset(2));
    EXPECT_EQ(driver.GetDetectLine(4), 4);
    std::int32_t first = 0;
    std::int32_t second = 0;
    driver.GetRISBand(2, first, second);
    EXPECT_EQ(first, 2);
    EXPECT_EQ(second, -2);
    EXPECT_EQ(driver.GetTriggerDACOffset(2), 14);
    EXPECT_EQ(driver.GetRawChannelOffset(3), 1.5F);
    EXPECT_EQ(driver.GetOffsetDACScale(3), 0.75F);
    EXPECT_EQ(driver.GetAcquistionState(2), 102);
    EXPECT_EQ(driver.GetTriggeredStatus(2), 202);
    EXPECT_EQ(driver.GetSamplesSinceTrigger(2), 302);
    std::vector<float> blocks(4 * 3072, -1);
    driver.GetBufferBlocksMultiChan(2, 3, blocks.data(), 6);
    EXPECT_EQ(blocks[3071], -1);
    EXPECT_EQ(blocks[3072 + 99], 99);
    EXPECT_EQ(blocks[3 * 3072], -1);
    std::vector<float> buffer(3073);
    const RISPass pass = driver.GetBufferRIS(1, buffer.data(), 150);
    EXPECT_EQ(pass.position, 12.25F);
    EXPECT_EQ(pass.second, 1.5F);
    EXPECT_EQ(pass.status, 3);
    EXPECT_EQ(buffer[149], 149);
    driver.GetBufferIncremental(1, buffer.data(), 10, 200);
    EXPECT_EQ(buffer[209], 209);
    EXPECT_EQ(driver.GetSamplePeriod(true, 0), 4e-8F);
    EXPECT_EQ(driver.GetSamplePeriod(false, 0.5), 0.5F);
    const std::vector<float> source = {12.7F};
    std::vector<float> destination = {0};
    driver.ReScaleSampleData(source.data(), destination.data(), 1, 10, 20, 3, 30);
    EXPECT_FLOAT_EQ(destination[0], 25.4F);
    std::vector<double> doubles(3000);
    driver.MakeSampleData(doubles.data(), 3000, 0.5, 2, 30);
    EXPECT_EQ(doubles[2999], 32.5);
    driver.FFT(doubles.data(), 2048, 0.5, 3);
    EXPECT_EQ((std::vector<double>(doubles.begin(), doubles.begin() + 4)),
              (std::vector<double>{2048, 0.5, 3, 0}));
    EXPECT_TRUE(driver.PortOpen(1));
    EXPECT_FALSE(driver.PortOpen(2));
    driver.CloseDrvr(4711);
}

TEST(DriverHeader, SaysTheSameInC) {
    const std::vector<std::int32_t> expected = {101, 100, 3072, 12288, 3073, 2048, -1, 0};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(header_in_c_sizes(static_cast<std::int32_t>(i)), expected[i]);
    }
}

} // namespace
