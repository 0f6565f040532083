/* The least driver that the program can use, in plain C against the interface's header alone: one module
 * whose record is a ramp. Built once whole, once without an export and once with a hole of its own. */
#include "corvantine_driver.h"

#include <string.h>

static void put_name(const char* name, uint8_t* buffer, int32_t* length) {
    *length = (int32_t)strlen(name);
    memcpy(buffer, name, (size_t)*length);
}

#ifdef NEEDS_SOMETHING_MISSING
int32_t corvantine_test_defined_nowhere(void);
int32_t CorvantineDrvr_OpenDrvr(void) {
    return corvantine_test_defined_nowhere();
}
#else
int32_t CorvantineDrvr_OpenDrvr(void) {
    return 4711;
}
#endif
int32_t CorvantineDrvr_GetSampleDepth(void) {
    return 3000;
}
void CorvantineDrvr_DrvrIssue(char text[100]) {
    strcpy(text, "minimal 1");
}
int32_t CorvantineDrvr_Enumerate(int32_t* port, int32_t* channel) {
    (void)port;
    (void)channel;
    return 1;
}
void CorvantineDrvr_GetProductName(int32_t ch, uint8_t buffer[101], int32_t* length) {
    put_name(ch == 1 ? "Corvantine" : "", buffer, length);
}
void CorvantineDrvr_GetSerialNumber(int32_t ch, uint8_t buffer[101], int32_t* length) {
    put_name(ch == 1 ? "C0001" : "", buffer, length);
}
void CorvantineDrvr_GetHWRev(int32_t ch, int32_t* out) {
    *out = 0x20 + ch;
}
void CorvantineDrvr_GetPortNumber(int32_t ch, int32_t* out) {
    *out = 2 * ch;
}
void CorvantineDrvr_GetControllerRev(int32_t ch, int32_t* out) {
    *out = 0x30 + ch;
}
void CorvantineDrvr_SetDemoMode(int32_t on) {
    (void)on;
}
int32_t CorvantineDrvr_OpenAndReset(int32_t ch) {
    return ch == 1;
}
void CorvantineDrvr_SetTrigMaster(int32_t ch, int32_t on) {
    (void)ch, (void)on;
}
void CorvantineDrvr_SetDetectLine(int32_t ch, int32_t drive, int32_t release) {
    (void)ch, (void)drive, (void)release;
}
int32_t CorvantineDrvr_GetDetectLine(int32_t ch) {
    return ch;
}
void CorvantineDrvr_Close(int32_t ch) {
    (void)ch;
}
void CorvantineDrvr_InitScope(int32_t ch, int32_t is_master) {
    (void)ch, (void)is_master;
}
void CorvantineDrvr_GetRISBand(int32_t ch, int32_t* first, int32_t* second) {
    *first = ch;
    *second = -ch;
}
void CorvantineDrvr_GetTriggerDACOffset(int32_t ch, int32_t* offset) {
    *offset = 7 * ch;
}
void CorvantineDrvr_GetRawChannelOffset(int32_t ch, float* out) {
    *out = 0.5F * (float)ch;
}
void CorvantineDrvr_GetOffsetDACScale(int32_t ch, float* out) {
    *out = 0.25F * (float)ch;
}

void CorvantineDrvr_SetUpFrontEnd(int32_t ch, int32_t range, int32_t dc, int32_t gnd, int32_t zero) {
    (void)ch, (void)range, (void)dc, (void)gnd, (void)zero;
}
void CorvantineDrvr_SetOffset(int32_t ch, float percent) {
    (void)ch, (void)percent;
}
void CorvantineDrvr_SetCalSource(int32_t ch, int32_t value) {
    (void)ch, (void)value;
}
#ifndef WITHOUT_SET_LED_MODE
void CorvantineDrvr_SetLEDMode(int32_t ch, int32_t value) {
    (void)ch, (void)value;
}
#endif
void CorvantineDrvr_SetBaseAdcClk(int32_t ch, int32_t megahertz) {
    (void)ch, (void)megahertz;
}
void CorvantineDrvr_SetDecimationRatio(int32_t ch, int32_t ratio) {
    (void)ch, (void)ratio;
}
void CorvantineDrvr_SetRISMode(int32_t ch, int32_t on) {
    (void)ch, (void)on;
}
void CorvantineDrvr_SetTriggerDelay(int32_t ch, float seconds) {
    (void)ch, (void)seconds;
}
void CorvantineDrvr_SetTrigThresh(int32_t ch, float percent) {
    (void)ch, (void)percent;
}
void CorvantineDrvr_SetTrigType(int32_t ch, int32_t type) {
    (void)ch, (void)type;
}
void CorvantineDrvr_SetNormTrig(int32_t ch, int32_t on) {
    (void)ch, (void)on;
}
void CorvantineDrvr_SetPreTrigDepth(int32_t ch, float fraction) {
    (void)ch, (void)fraction;
}

void CorvantineDrvr_AcquisitionStart(int32_t ch) {
    (void)ch;
}
void CorvantineDrvr_AcquisitionEnd(int32_t ch) {
    (void)ch;
}
int32_t CorvantineDrvr_GetAcquistionState(int32_t ch) {
    return 100 + ch;
}
int32_t CorvantineDrvr_GetTriggeredStatus(int32_t ch) {
    return 200 + ch;
}
int32_t CorvantineDrvr_GetSamplesSinceTrigger(int32_t ch) {
    return 300 + ch;
}
void CorvantineDrvr_GetBufferBlocksMultiChan(int32_t first, int32_t last, float* blocks, int32_t count) {
    int32_t ch, i;
    for (ch = first; ch <= last; ++ch) {
        for (i = 0; i < count * 512; ++i) {
            blocks[(ch - 1) * CORVANTINE_ROW + i] = (float)(i % 100);
        }
    }
}
void CorvantineDrvr_GetBufferIncremental(int32_t ch, float* buffer, int32_t count, int32_t start) {
    int32_t i;
    (void)ch;
    for (i = start; i < start + count; ++i) {
        buffer[i] = (float)i;
    }
}
void CorvantineDrvr_GetBufferRIS(int32_t ch, float* buffer, int32_t count, float* position, float* second,
                                 int32_t* status) {
    CorvantineDrvr_GetBufferIncremental(ch, buffer, count, 0);
    *position = 12.25F;
    *second = 1.5F;
    *status = 3;
}
float CorvantineDrvr_GetSamplePeriod(int32_t running, float held_period) {
    return running ? 4e-8F : held_period;
}

void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination, int32_t count,
                                      float old_offset, float new_offset, float old_volts, float new_volts) {
    int32_t i;
    for (i = 0; i < count; ++i) {
        destination[i] = (source[i] - old_offset * 1.27F) * old_volts / new_volts + new_offset * 1.27F;
    }
}
void CorvantineDrvr_MakeSampleData(double* buffer, int32_t count, double offset, int32_t channel_less_one,
                                   int32_t phase) {
    int32_t i;
    for (i = 0; i < count; ++i) {
        buffer[i] = offset + channel_less_one + phase;
    }
}
void CorvantineDrvr_FFT(double* buffer, int32_t length, double scale_mode, int32_t window,
                        int32_t* reserved) {
    buffer[0] = length;
    buffer[1] = scale_mode;
    buffer[2] = window;
    buffer[3] = *reserved;
}
int32_t CorvantineDrvr_PortOpen(int32_t ch) {
    return ch == 1;
}
void CorvantineDrvr_CloseDrvr(int32_t handle) {
    (void)handle;
}
