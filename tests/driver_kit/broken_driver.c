/* The skeleton with one fault, which the environment variable CORVANTINE_FAULT names: what the check of a
 * driver has to find. Each operation is the skeleton's under the name Sound_ unless its fault is asked for.
 */
#include "sound.h"

#include "corvantine_driver.h"

#include "broken.h"

#include <fenv.h>
#include <locale.h>
#include <math.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

static int has(const char* fault) {
    const char* chosen = getenv("CORVANTINE_FAULT");
    return chosen != NULL && strcmp(chosen, fault) == 0;
}
static volatile int* volatile nowhere;
static void pause_for(long milliseconds) {
    const struct timespec time = {milliseconds / 1000, milliseconds % 1000 * 1000000};
    nanosleep(&time, NULL);
}
static void* wait_for_ever(void* unused) {
    for (;;) {
        pause_for(60000);
    }
    return unused;
}
static void die(void) { *nowhere = 1; }

static int opened, counts_asked;
static volatile int one_too_far = 1; /* so that no compiler sees it coming */
static float offset_percent;

/* The library and what is on the bus */
EXPORT int32_t CorvantineDrvr_OpenDrvr(void) {
    const int32_t handle = Sound_OpenDrvr();
    pthread_t thread;
    ++opened;
    if (has("leaks a file")) {
        (void)!fopen("/dev/null", "r");
    }
    if (has("leaks memory")) {
        memset(malloc(100000), 1, 100000);
    }
    if (has("leaks a thread")) {
        pthread_create(&thread, NULL, wait_for_ever, NULL);
        pthread_detach(thread);
    }
    if (has("sets the locale")) {
        setlocale(LC_ALL, "C.UTF-8");
    }
    if (has("changes the folder")) {
        (void)!chdir("/");
    }
    if (has("rounds downwards")) {
        fesetround(FE_DOWNWARD);
    }
    if (has("takes interrupts")) {
        signal(SIGINT, SIG_IGN);
    }
    return handle;
}
EXPORT int32_t CorvantineDrvr_GetSampleDepth(void) {
    if (has("depth of 2048")) {
        return 2048;
    }
    return has("opens once only") && opened > 1 ? 0 : Sound_GetSampleDepth();
}
EXPORT void CorvantineDrvr_DrvrIssue(char text[100]) {
    if (has("issue overrun")) {
        text[one_too_far + 99] = ' ';
    }
    if (!has("issue silent")) {
        Sound_DrvrIssue(text);
    }
}
EXPORT int32_t CorvantineDrvr_Enumerate(int32_t* port, int32_t* channel) {
    int32_t none = -2, second = 2, its_port = 3, count;
    if (has("forcing ignored")) {
        return Sound_Enumerate(&none, &none);
    }
    if (has("second slot")) {
        return Sound_Enumerate(&its_port, &second);
    }
    count = Sound_Enumerate(port, channel);
    if (has("forcing overwritten")) {
        *port = *channel = 1;
    }
    return has("counts nothing") ? 0 : count;
}
EXPORT void CorvantineDrvr_GetProductName(int32_t ch, uint8_t buffer[101], int32_t* length) {
    if (has("name overrun")) {
        buffer[one_too_far + 100] = ' ';
    }
    if (has("dies of slot 4") && ch == 4) {
        die();
    }
    if (has("name length unwritten")) {
        return;
    }
    Sound_GetProductName(has("names every slot") ? 1 : ch, buffer, length);
    if (has("name length of 200")) {
        *length = 200;
    }
}
EXPORT void CorvantineDrvr_GetSerialNumber(int32_t ch, uint8_t buffer[101], int32_t* length) {
    Sound_GetSerialNumber(ch, buffer, length);
    *length = has("no serial") ? 0 : *length;
}
EXPORT void CorvantineDrvr_GetHWRev(int32_t ch, int32_t* out) {
    if (!has("revision unwritten")) {
        Sound_GetHWRev(ch, out);
    }
}
EXPORT void CorvantineDrvr_GetPortNumber(int32_t ch, int32_t* out) {
    Sound_GetPortNumber(ch, out);
    *out = has("port of 0") ? 0 : *out;
}
EXPORT int32_t CorvantineDrvr_OpenAndReset(int32_t ch) {
    const int32_t answer = Sound_OpenAndReset(ch);
    if (has("demo opens one") && ch != 1) {
        return 0;
    }
    return has("does not open") ? 0 : has("opens everything") ? 1 : answer;
}
EXPORT int32_t CorvantineDrvr_GetDetectLine(int32_t ch) {
    return has("line stuck low") ? 0 : has("line stuck high") ? 1 : Sound_GetDetectLine(ch);
}
EXPORT void CorvantineDrvr_Close(int32_t ch) {
    if (has("exits in Close")) {
        exit(7);
    }
    Sound_Close(ch);
}
EXPORT void CorvantineDrvr_GetOffsetDACScale(int32_t ch, float* out) {
    Sound_GetOffsetDACScale(ch, out);
    *out = has("scale is no number") ? NAN : *out;
}

/* Front end, clocks, trigger */
EXPORT void CorvantineDrvr_SetUpFrontEnd(int32_t ch, int32_t range, int32_t dc, int32_t gnd, int32_t zero) {
    Sound_SetUpFrontEnd(ch, has("ground ignored") ? 0 : range, dc, has("ground ignored") ? 0 : gnd, zero);
}
EXPORT void CorvantineDrvr_SetOffset(int32_t ch, float percent) {
    offset_percent = percent;
    Sound_SetOffset(ch, has("offset ignored")       ? 0
                        : has("offset upside down") ? -percent
                        : has("offset in steps")    ? percent / 1.27F
                                                    : percent);
}
EXPORT void CorvantineDrvr_SetBaseAdcClk(int32_t ch, int32_t megahertz) {
    if (has("dies of channel 5") && (ch < 1 || ch > 4)) {
        die();
    }
    Sound_SetBaseAdcClk(ch, has("clock ignored") ? 50 : megahertz);
    if (has("clock forgets the ratio")) {
        Sound_SetDecimationRatio(ch, 1);
    }
}
static int32_t ratio_sent = 1;
EXPORT void CorvantineDrvr_SetDecimationRatio(int32_t ch, int32_t ratio) {
    ratio_sent = ratio;
    if (!has("ratio ignored")) {
        Sound_SetDecimationRatio(ch, ratio);
    }
}
EXPORT void CorvantineDrvr_SetTrigThresh(int32_t ch, float percent) {
    if (has("slow setting")) {
        pause_for(80);
    }
    Sound_SetTrigThresh(ch, has("threshold upside down")      ? -percent
                            : has("threshold without offset") ? percent + offset_percent
                                                              : percent);
}
EXPORT void CorvantineDrvr_SetTrigType(int32_t ch, int32_t type) {
    Sound_SetTrigType(ch, has("types exchanged") ? type ^ 1 : has("edges are levels") ? type & 1 : type);
}
EXPORT void CorvantineDrvr_SetNormTrig(int32_t ch, int32_t on) {
    if (has("never waits")) {
        on = 0;
    }
    Sound_SetNormTrig(has("SetNormTrig on any channel") ? 1 : ch, has("always waits") ? 1 : on);
}

/* Acquisition */
EXPORT void CorvantineDrvr_AcquisitionEnd(int32_t ch) {
    while (has("hangs in AcquisitionEnd")) {
        pause_for(1000);
    }
    if (!has("end ignored")) {
        Sound_AcquisitionEnd(ch);
    }
}
EXPORT int32_t CorvantineDrvr_GetAcquistionState(int32_t ch) {
    if (has("slow question")) {
        pause_for(5);
    }
    if (has("dies on a closed channel") && !Sound_PortOpen(ch)) {
        die();
    }
    return has("never ends") ? 1 : has("never runs") ? 0 : Sound_GetAcquistionState(ch);
}
EXPORT int32_t CorvantineDrvr_GetTriggeredStatus(int32_t ch) {
    return has("never triggered") ? 0 : has("always triggered") ? 1 : Sound_GetTriggeredStatus(ch);
}
EXPORT int32_t CorvantineDrvr_GetSamplesSinceTrigger(int32_t ch) {
    const int32_t count = Sound_GetSamplesSinceTrigger(ch);
    ++counts_asked;
    return has("counts half")          ? count / 2
           : has("count stands still") ? 5
           : has("count falls")        ? (counts_asked % 4 == 0 ? count / 2 : count)
           : has("twice as fast")      ? 2 * count
                                       : count;
}
EXPORT void CorvantineDrvr_GetBufferBlocksMultiChan(int32_t first, int32_t last, float* blocks,
                                                    int32_t count) {
    int i;
    if (has("slow read-out")) {
        pause_for(80);
    }
    if (has("row overrun")) {
        blocks[CORVANTINE_BLOCKS] = 0;
    }
    if (has("writes before the rows")) {
        blocks[-one_too_far] = 0;
    }
    Sound_GetBufferBlocksMultiChan(first, last, blocks,
                                   has("short read-out")    ? 5
                                   : has("range of blocks") ? 6
                                                            : count);
    for (i = 0; i < 512 && Sound_PortOpen(1); ++i) {
        blocks[i] =
            has("sample is no number") && i == 100 ? NAN : blocks[i] + (has("unsigned samples") ? 128 : 0);
    }
}
EXPORT void CorvantineDrvr_GetBufferIncremental(int32_t ch, float* buffer, int32_t count, int32_t start) {
    int i;
    if (has("increments from 0")) {
        start = 0;
    }
    if (has("one increment more")) {
        ++count;
    }
    if (has("increments without bounds")) {
        for (i = start; i < start + count; ++i) {
            buffer[i] = 0;
        }
        return;
    }
    Sound_GetBufferIncremental(ch, buffer, count, start);
    if (has("unsigned increments") && count > 0 && start >= 0 && start < CORVANTINE_BUFFER) {
        buffer[start] = 200;
    }
}
EXPORT void CorvantineDrvr_GetBufferRIS(int32_t ch, float* buffer, int32_t count, float* position,
                                        float* second, int32_t* status) {
    int i;
    Sound_GetBufferRIS(ch, buffer, count, position, second, status);
    if (has("writes before the pass")) {
        buffer[-one_too_far] = 0;
    }
    if (has("a pass out of nothing")) {
        *status = 0;
    }
    if (*status == -1) {
        return;
    }
    *position = has("position beyond the gap") ? 3 * *position
                : has("position in parts")     ? *position / 20
                : has("position is no number") ? NAN
                                               : *position;
    for (i = 0; i < CORVANTINE_BUFFER && has("pass of a whole record"); ++i) {
        buffer[i] = 0;
    }
}
EXPORT float CorvantineDrvr_GetSamplePeriod(int32_t running, float held_period) {
    const float period = Sound_GetSamplePeriod(running, held_period);
    if (has("period in microseconds")) {
        return 1e6F * period;
    }
    if (has("RIS at 20 ns") && period == 1e-9F) {
        return 20e-9F;
    }
    if (has("ratio of 0") && ratio_sent <= 0) {
        return 0;
    }
    return has("held period ignored") ? Sound_GetSamplePeriod(-1, 0) : period;
}

/* Arithmetic */
EXPORT void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination, int32_t count,
                                             float old_offset, float new_offset, float old_volts,
                                             float new_volts) {
    if (has("writes to the source") && count > 0) {
        ((float*)source)[0] = 0;
    }
    if (has("reads behind the source")) {
        *(volatile float*)destination = source[count];
    }
    if (has("scales the wrong way")) {
        Sound_ReScaleSampleData(source, destination, count, old_offset, new_offset, new_volts, old_volts);
        return;
    }
    Sound_ReScaleSampleData(source, destination, count, old_offset, new_offset, old_volts, new_volts);
    if (has("scales one more") && count > 0) {
        destination[count] = 0;
    }
}
EXPORT void CorvantineDrvr_MakeSampleData(double* buffer, int32_t count, double offset,
                                          int32_t channel_less_one, int32_t phase) {
    int i;
    if (has("slow traces")) {
        pause_for(20);
    }
    Sound_MakeSampleData(buffer, has("short traces") ? 2048 : count,
                         has("trace ignores the offset") ? 0 : offset,
                         has("traces alike") ? 0 : channel_less_one, has("trace stands still") ? 0 : phase);
    for (i = 0; i < count && has("trace is flat"); ++i) {
        buffer[i] = offset;
    }
    for (i = 0; i < count && has("trace is not clipped"); ++i) {
        buffer[i] += offset;
    }
    if (has("trace overrun")) {
        buffer[count] = 0;
    }
}
EXPORT void CorvantineDrvr_FFT(double* buffer, int32_t length, double scale_mode, int32_t window,
                               int32_t* reserved) {
    int i;
    if (has("slow transform")) {
        pause_for(40);
    }
    Sound_FFT(buffer, length, has("decibels ignored") ? 0 : scale_mode,
              has("windows exchanged") && (window == 1 || window == 2) ? 3 - window : window, reserved);
    for (i = 0; i < length && length == CORVANTINE_FFT_LENGTH; ++i) {
        buffer[i] = has("spectrum of powers") && scale_mode == 0                      ? buffer[i] * buffer[i]
                    : has("windows not made up for") && scale_mode == 0 && window > 0 ? buffer[i] / 2
                    : has("silence is no number") && buffer[i] < -200                 ? -INFINITY
                                                                                      : buffer[i];
    }
    if (has("spectrum overrun") && length == CORVANTINE_FFT_LENGTH) {
        buffer[length] = 0;
    }
    if (has("spectrum a bin off") && length == CORVANTINE_FFT_LENGTH) {
        memmove(buffer + 1, buffer, 1024 * sizeof *buffer);
    }
}
EXPORT int32_t CorvantineDrvr_PortOpen(int32_t ch) {
    return has("port never open") ? 0 : has("port always open") ? 1 : Sound_PortOpen(ch);
}
