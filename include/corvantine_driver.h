/* The interface between Corvantine and an instrument driver library.
 *
 * A driver is a shared library that exports every function below with C linkage and the platform's
 * default calling convention. Include this header, define the functions, link a shared library.
 *
 * Integers are int32_t, booleans are int32_t with True = -1 and False = 0, ch is a channel 1..4.
 * Samples are in ADC steps, signed around zero; 127 steps are ten divisions. All calls come from one
 * thread. Calls on closed or unused channels happen and must return 0 or do nothing.
 */
#ifndef CORVANTINE_DRIVER_H
#define CORVANTINE_DRIVER_H

#include <stdint.h>

#if defined(_WIN32)
#define CORVANTINE_DRIVER_EXPORT __declspec(dllexport)
#else
#define CORVANTINE_DRIVER_EXPORT __attribute__((visibility("default")))
#endif

enum {
    CORVANTINE_TRUE = -1,
    CORVANTINE_FALSE = 0,
    CORVANTINE_NAME_BYTES = 101,  /* receive buffer of a name or serial string */
    CORVANTINE_ISSUE_BYTES = 100, /* receive buffer of the issue text */
    CORVANTINE_ROW = 3072,        /* positions of a row of the block buffer */
    CORVANTINE_BLOCKS = 4 * 3072, /* floats of the block buffer */
    CORVANTINE_BUFFER = 3073,     /* floats of a single-channel buffer */
    CORVANTINE_FFT_LENGTH = 2048  /* doubles of a spectrum buffer */
};

#ifdef __cplusplus
extern "C" {
#endif

/* The library and what is on the bus */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_OpenDrvr(void);
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetSampleDepth(void); /* must be 3000 */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_DrvrIssue(char text[100]);
/* *port and *channel: -2 nothing forced, -1 no usable forcing, else a port to force to a channel. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_Enumerate(int32_t* port, int32_t* channel);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetProductName(int32_t ch, uint8_t buffer[101], int32_t* length);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetSerialNumber(int32_t ch, uint8_t buffer[101],
                                                             int32_t* length);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetHWRev(int32_t ch, int32_t* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetPortNumber(int32_t ch, int32_t* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetControllerRev(int32_t ch, int32_t* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetDemoMode(int32_t on);
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_OpenAndReset(int32_t ch); /* not zero: opened */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTrigMaster(int32_t ch, int32_t on);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetDetectLine(int32_t ch, int32_t drive, int32_t release);
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetDetectLine(int32_t ch); /* not zero: the line is high */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_Close(int32_t ch);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_InitScope(int32_t ch, int32_t is_master);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetRISBand(int32_t ch, int32_t* first, int32_t* second);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetTriggerDACOffset(int32_t ch, int32_t* offset);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetRawChannelOffset(int32_t ch, float* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetOffsetDACScale(int32_t ch, float* out);

/* Front end, clocks, trigger */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetUpFrontEnd(int32_t ch, int32_t range, int32_t dc, int32_t gnd,
                                                           int32_t zero);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetOffset(int32_t ch, float percent);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetCalSource(int32_t ch, int32_t value);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetLEDMode(int32_t ch, int32_t value);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetBaseAdcClk(int32_t ch, int32_t megahertz); /* 50, 25, 10 */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetDecimationRatio(int32_t ch, int32_t ratio);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetRISMode(int32_t ch, int32_t on); /* 1 or 0 */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTriggerDelay(int32_t ch, float seconds);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTrigThresh(int32_t ch, float percent);
/* 0 less than, 1 greater than, 2 falling edge, 3 rising edge */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTrigType(int32_t ch, int32_t type);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetNormTrig(int32_t ch, int32_t on);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetPreTrigDepth(int32_t ch, float fraction); /* 0..0.99 */

/* Acquisition */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_AcquisitionStart(int32_t ch);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_AcquisitionEnd(int32_t ch);
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetAcquistionState(int32_t ch); /* 0: nothing in progress */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetTriggeredStatus(int32_t ch); /* not zero: has fired */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetSamplesSinceTrigger(int32_t ch); /* since the arm */
/* Row c-1 of blocks is channel c; count blocks of 512 positions fill a row. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetBufferBlocksMultiChan(int32_t first, int32_t last,
                                                                      float* blocks, int32_t count);
/* Fills positions start .. start+count-1. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetBufferIncremental(int32_t ch, float* buffer, int32_t count,
                                                                  int32_t start);
/* count samples 20 ns apart; *position 0..20 tells where in the gap they fell; *status -1: discard. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetBufferRIS(int32_t ch, float* buffer, int32_t count,
                                                          float* position, float* second, int32_t* status);
CORVANTINE_DRIVER_EXPORT float CorvantineDrvr_GetSamplePeriod(int32_t running, float held_period);

/* Arithmetic that the instrument's maker knows best */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination,
                                                               int32_t count, float old_offset,
                                                               float new_offset, float old_volts,
                                                               float new_volts);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_MakeSampleData(double* buffer, int32_t count, double offset,
                                                            int32_t channel_less_one, int32_t phase);
/* In place: 2048 samples in, magnitudes in entries 0..1024 out. scale_mode 0: linear, else decibels
 * relative to it. window: 0 rectangular, 1 Hanning, 2 Hamming, 3 triangular, 4 Welch. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_FFT(double* buffer, int32_t length, double scale_mode,
                                                 int32_t window, int32_t* reserved);
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_PortOpen(int32_t ch);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_CloseDrvr(int32_t handle);

#ifdef __cplusplus
}
#endif
#endif
