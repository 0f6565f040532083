#pragma once

#include "driver/driver.h"
#include "driver/library_backend.h"
#include "frame/record/samples.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// The simulated stack, loaded as the program loads it, on a stack file that a test writes. What the library
/// says at its close, of rules that were broken, fails the test that does not ask for it with Leave.
class StackFixture : public testing::Test {
  protected:
    ~StackFixture() override {
        EXPECT_EQ(Leave(), "");
        qunsetenv("CORVANTINE_STACK");
    }

    /// Closes the channels and the library; returns what it says on standard error.
    std::string Leave() {
        if (!driver) {
            return {};
        }
        for (int ch = 1; ch <= kScopeChannels; ++ch) {
            driver->Close(ch);
        }
        testing::internal::CaptureStderr();
        driver->CloseDrvr(handle_);
        driver.reset();
        opened = 0;
        return testing::internal::GetCapturedStderr();
    }

    std::string Write(const std::string& name, const std::string& text) {
        const QString path = folder.filePath(QString::fromStdString(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.data(), static_cast<qint64>(text.size()));
        return path.toStdString();
    }

    /// Up to and with Enumerate; returns what that found.
    int Find(const std::string& stackText, std::int32_t port = -2, std::int32_t channel = -2) {
        return FindFile(Write("test.stack", stackText), port, channel);
    }
    int FindFile(const std::string& path, std::int32_t port = -2, std::int32_t channel = -2) {
        EXPECT_EQ(Leave(), "");
        qputenv("CORVANTINE_STACK", path.c_str());
        LibraryBackend::Loaded loaded = LibraryBackend::Load(CORVANTINE_SIMULATED_STACK);
        EXPECT_TRUE(loaded.backend) << loaded.reason.toStdString();
        driver = std::make_unique<Driver>(std::move(loaded.backend));
        handle_ = driver->OpenDrvr();
        return driver->Enumerate(port, channel);
    }

    /// Opens count modules as a start-up does, on the fastest clock and the range with 3 V at full scale,
    /// source 1, and leaves them triggering normally on a rising edge at the middle of the record.
    void Open(const std::string& stackText, int count = 1) {
        EXPECT_GE(Find(stackText), count);
        for (int ch = 1; ch <= count; ++ch) {
            EXPECT_TRUE(driver->OpenAndReset(ch));
            driver->SetTrigMaster(ch, ch == 1);
            driver->SetDetectLine(ch, 0, 1);
            driver->InitScope(ch, ch == 1);
            driver->SetUpFrontEnd(ch, 1, true, false);
            driver->SetOffset(ch, 0);
            driver->SetCalSource(ch, 0);
            driver->SetNormTrig(ch, true);
            driver->SetTrigType(ch, 3);
            driver->SetTrigThresh(ch, 0);
            driver->SetPreTrigDepth(ch, 0.5F);
            driver->SetTriggerDelay(ch, 0);
        }
        opened = count;
        SetTimebase(50, 1);
    }

    void SetTimebase(int megahertz, int decimation, bool ris = false) {
        for (int ch = 1; ch <= opened; ++ch) {
            driver->SetBaseAdcClk(ch, megahertz);
            driver->SetDecimationRatio(ch, decimation);
            driver->SetRISMode(ch, ris);
        }
    }

    /// The slaves first, the source of the trigger last.
    void Start(int source = 1) {
        for (int ch = 1; ch <= opened; ++ch) {
            if (ch != source) {
                driver->AcquisitionStart(ch);
            }
        }
        driver->AcquisitionStart(source);
    }

    void End() {
        for (int ch = 1; ch <= opened; ++ch) {
            driver->AcquisitionEnd(ch);
        }
    }

    static bool Until(const std::function<bool()>& done) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!done()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
        return true;
    }

    bool Finish() {
        const bool idle = Until([this] { return driver->GetAcquistionState(1) == 0; });
        End();
        return idle;
    }

    std::vector<float> Row(int ch) {
        std::vector<float> blocks(4 * kSampleRow);
        driver->GetBufferBlocksMultiChan(1, 4, blocks.data(), 6);
        return {blocks.begin() + (ch - 1) * kSampleRow, blocks.begin() + ch * kSampleRow};
    }

    /// One whole record of a channel.
    std::vector<float> Acquire(int ch = 1) {
        Start();
        EXPECT_TRUE(Finish());
        return Row(ch);
    }

    QTemporaryDir folder;
    std::unique_ptr<Driver> driver;
    int opened = 0;

  private:
    std::int32_t handle_ = 0;
};
