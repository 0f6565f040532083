/* The interface between Corvantine and an instrument driver library: all that the author of a driver has to
 * know. docs/drivers.md leads from the skeleton in drivers/skeleton/ to a checked driver.
 *
 * A driver is a shared library that exports every function below with C linkage and the platform's default
 * calling convention. Include this header, define the functions, link a shared library. The program loads
 *   1. the library that the environment variable CORVANTINE_DRIVER names, else
 *   2. CorvantineDrvr_W32.so (.dll, .dylib) in its own folder, else
 *   3. the driver built into it, which finds no module and demonstrates.
 * A library that cannot be loaded, needs a symbol that is nowhere or lacks one export is refused with the
 * reason, and the third takes its place.
 *
 * TYPES. Integers are int32_t; booleans are int32_t with True = -1 and False = 0 (take any other value for
 * True); reals are float unless declared otherwise. ch is a channel 1..4, the slot of a module: one module is
 * one channel.
 *
 * ORDER OF THE CALLS
 *   OpenDrvr, GetSampleDepth, DrvrIssue, Enumerate           once
 *   GetProductName twice, GetSerialNumber, GetHWRev,
 *     GetPortNumber                                          for the slots 1..4, empty ones too
 *   SetDemoMode(1)                                           only if no product name is "Corvantine"
 *   OpenAndReset, SetTrigMaster(ch, 0),
 *     SetDetectLine(ch, 0, -1 or 1)                          for each channel in use
 *   the test of the stack by SetDetectLine, GetDetectLine    see there
 *   GetControllerRev, then InitScope, GetRISBand,
 *     GetTriggerDACOffset, GetRawChannelOffset,
 *     GetOffsetDACScale and the settings of the front end    for each channel in use
 *   SetTrigMaster, clocks, trigger, then acquisition         for as long as the program runs
 *   Close for each channel in use, CloseDrvr                 at the end
 *
 * CHANNELS THAT ARE NOT IN USE. Calls on channels that are empty, closed or not opened happen, and so do
 * calls of GetAcquistionState, SetNormTrig and SetTrigMaster on them in the middle of a run: return 0 or do
 * nothing.
 *
 * ERRORS. The program tests three answers: OpenAndReset (0: the channel is left out), GetDetectLine (the test
 * of the stack) and the status of GetBufferRIS (-1: the pass is thrown away). No other function reports an
 * error. A module that stops answering lets its settings fall on the floor and answers 0, but for
 * GetAcquistionState, which is not zero from the arm until the end: so it shows as a trigger that does not
 * come.
 *
 * WHO OWNS WHAT. The caller owns every buffer; a driver writes into it during the call and keeps no pointer.
 * Write inside the size that is told, and nowhere else. Samples that are no number, names that are too long,
 * positions and periods out of range are not believed by the program, but a write out of bounds is the end of
 * it.
 *
 * THREADS. All calls come from one thread, which also draws. A driver with threads of its own hides them and
 * ends them in CloseDrvr. No exception may leave a function; leave the process as it is: locale, working
 * folder, rounding mode, standard output.
 *
 * HOW SLOW MAY IT BE. GetAcquistionState, GetTriggeredStatus and GetSamplesSinceTrigger are asked up to a
 * thousand times in a loop and must return at once (microseconds; they may tell what a thread of the driver
 * knows). Up to a hundred times a second come one read-out of all channels or five RIS passes for each
 * channel, and FFT for each spectrum that is shown: some milliseconds each. Settings follow a knob under a
 * finger: some milliseconds too. OpenDrvr, Enumerate, OpenAndReset, InitScope and Close may take seconds.
 *
 * SAMPLES are floats in ADC steps, signed around zero, the middle of the screen: 127 steps are ten divisions,
 * so that full scale is -127..127. Volts at the input are steps times (volts per division) times 10 / 127. A
 * sample contains the channel's offset, as the converter sees it. A record has 3000 samples.
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
    CORVANTINE_NAME_BYTES = 101,    /* receive buffer of a name or serial string */
    CORVANTINE_ISSUE_BYTES = 100,   /* receive buffer of the issue text */
    CORVANTINE_SAMPLE_DEPTH = 3000, /* samples of a record */
    CORVANTINE_ROW = 3072,          /* positions of a row of the block buffer */
    CORVANTINE_BLOCKS = 4 * 3072,   /* floats of the block buffer */
    CORVANTINE_BUFFER = 3073,       /* floats of a single-channel buffer */
    CORVANTINE_FFT_LENGTH = 2048    /* doubles of a spectrum buffer */
};

#ifdef __cplusplus
extern "C" {
#endif

/* ---- The library and what is on the bus ------------------------------------------------------------- */

/* The first call. Returns a handle that comes back in CloseDrvr and means nothing to the program. The library
 * may be opened again after CloseDrvr. Error: none is told; find no module instead. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_OpenDrvr(void);

/* Samples of a record. Must return 3000: the program's records have that size whatever is returned. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetSampleDepth(void);

/* The library's name and issue for the log: 8-bit text, zero-terminated or filled up with blanks. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_DrvrIssue(char text[100]);

/* Finds the modules and gives them the slots 1..4 from 1 on, those named "Corvantine" first: the program uses
 * as many slots from 1 on as have that name. Returns how many interfaces were found, whatever they are, 0 for
 * none.
 * *port and *channel are what the user asked for, to be read and left as they stand: -2 nothing, -1 something
 * that makes no sense, else the module at port number *port goes to slot *channel (1..4), and the others to
 * the remaining slots. With only one of the two usable nothing is forced. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_Enumerate(int32_t* port, int32_t* channel);

/* 8-bit characters without a terminator into buffer, their count 0..101 into *length. A module counts only if
 * its product name is exactly "Corvantine"; an empty slot has the length 0. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetProductName(int32_t ch, uint8_t buffer[101], int32_t* length);

/* As GetProductName. What is calibrated is kept under the serial string, so each module needs its own, and
 * the same on every day; printable characters. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetSerialNumber(int32_t ch, uint8_t buffer[101],
                                                             int32_t* length);

/* Numbers that are shown: hardware revision and controller revision in hexadecimal, the port's number (1 or
 * more, each module its own). Write 0 for an empty slot. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetHWRev(int32_t ch, int32_t* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetPortNumber(int32_t ch, int32_t* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetControllerRev(int32_t ch, int32_t* out);

/* Called with 1 if no module matched; stays so to the end. From then on OpenAndReset opens all four channels,
 * GetDetectLine returns 0 for all channels but the master (returning 0 for all will do), every setting is
 * accepted, GetSamplePeriod follows the clocks as ever, and MakeSampleData makes the traces.
 * GetAcquistionState may return anything, GetBufferBlocksMultiChan is called and its result ignored,
 * GetBufferRIS tells the status -1. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetDemoMode(int32_t on);

/* Opens a module's port and brings the module to a known state. Returns not zero if it is open, 0 if it could
 * not be opened or there is none: the program goes on without that channel. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_OpenAndReset(int32_t ch);

/* True: this channel is the source of the stack's trigger, which starts the record of all; False: it is not.
 * The program takes the mark from all channels before it gives it to one. (The master of InitScope, which is
 * asked for the state and drives the detect line, is another matter; at first both are the same channel.) */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTrigMaster(int32_t ch, int32_t on);

/* One wire joins the modules of a stack; it is high unless a module pulls it low. (ch, -1, 0) pulls it low,
 * (ch, 0, 1) lets go of it. GetDetectLine returns the level as the module hears it: not zero is high; 0 for a
 * channel that is not open.
 * The program lets all go and wants to read high at the master, lets the master pull, and wants to read 0 at
 * each other module. A single module reads high when nobody pulls, low when it pulls itself. A driver without
 * such a wire plays it in software. Error: what reads otherwise is left out with a message to the user. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetDetectLine(int32_t ch, int32_t drive, int32_t release);
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetDetectLine(int32_t ch);

/* Ends what runs and closes the port. Harmless on a closed channel; the channel may be opened again. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_Close(int32_t ch);

/* After the test of the stack and before the first setting. is_master: True for the one module that is asked
 * for the state of the stack. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_InitScope(int32_t ch, int32_t is_master);

/* Figures for the list of diagnostics; their meaning is the maker's. Write both, and finite reals. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetRISBand(int32_t ch, int32_t* first, int32_t* second);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetTriggerDACOffset(int32_t ch, int32_t* offset);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetRawChannelOffset(int32_t ch, float* out);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetOffsetDACScale(int32_t ch, float* out);

/* ---- Front end, clocks, trigger --------------------------------------------------------------------- */
/* None reports an error; a value outside its range is left unused. All hold until they are set again or the
 * channel is opened anew; they may come while an acquisition runs. */

/* range: 0 is 0.03, 1 is 0.3, 2 is 3 volts per division at the input (the probe's factor is the program's).
 * The coupling comes as two flags: dc True is DC, gnd True is ground, both False is AC. zero is always 0. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetUpFrontEnd(int32_t ch, int32_t range, int32_t dc, int32_t gnd,
                                                           int32_t zero);

/* Where 0 volts lie, in percent of full scale, -100..100: percent times 1.27 steps above the middle, in every
 * range. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetOffset(int32_t ch, float percent);

/* 1: the module's square wave for the compensation of probes is on, 0: off. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetCalSource(int32_t ch, int32_t value);

/* The module's lamp: 1 normal; 2 "it is me"; 3 "it is another". To identify a module all get 3, then it gets
 * 2, and after four seconds all get 1. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetLEDMode(int32_t ch, int32_t value);

/* Clock of the converter, 50, 25 or 10 MHz, and one sample kept of so many, 1..400000. Only what changes is
 * sent, in either order; a running acquisition was ended before. All channels in use get the same. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetBaseAdcClk(int32_t ch, int32_t megahertz);
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetDecimationRatio(int32_t ch, int32_t ratio);

/* 1: repetitive interleaved sampling, see GetBufferRIS; 0: not. Clock 50 and ratio 1 come with it. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetRISMode(int32_t ch, int32_t on);

/* How long after the trigger the moment lies that stands at the pre-trigger depth: 0 to 65535 samples, told
 * in seconds. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTriggerDelay(int32_t ch, float seconds);

/* The trigger's level in percent of full scale, -100..100: percent times 1.27 steps, compared with samples,
 * which contain the offset. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTrigThresh(int32_t ch, float percent);

/* Fires while the sample is 0 less than the level, 1 greater than the level, or when it crosses it 2 falling,
 * 3 rising. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetTrigType(int32_t ch, int32_t type);

/* True: a record waits for its trigger for ever. False: it starts with the arm and counts as triggered. The
 * program ends a record that waits by AcquisitionEnd when it sets False. Comes for channels that are not in
 * use as well. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetNormTrig(int32_t ch, int32_t on);

/* The part of the record before the trigger, 0..0.99 of 3000 samples; it fills before a trigger can fire. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_SetPreTrigDepth(int32_t ch, float fraction);

/* ---- Acquisition ------------------------------------------------------------------------------------ */
/* A cycle: AcquisitionStart on each channel that is shown, the source of the trigger last; questions until
 * GetAcquistionState(master) is 0; AcquisitionEnd on each; a read-out. */

/* Arms a channel for one record. A second call starts anew. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_AcquisitionStart(int32_t ch);

/* Ends or aborts; what was taken can still be read. Harmless when nothing runs. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_AcquisitionEnd(int32_t ch);

/* Not zero from the arm until the record is complete or ended; 0 if nothing runs. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetAcquistionState(int32_t ch);

/* Not zero once the trigger of the running or last record has fired; 0 from the arm until then. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetTriggeredStatus(int32_t ch);

/* Samples of the record so far, counted from the arm, 0..3000; it grows while a slow record runs, and the
 * program fetches them by GetBufferIncremental as they come ("roll"). */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_GetSamplesSinceTrigger(int32_t ch);

/* The record of the channels first..last. Row c-1 of blocks belongs to channel c, wherever first is: its
 * sample i goes to blocks[(c-1) * 3072 + i]. count blocks of 512 samples are filled, from the row's start;
 * the program asks for 1, 4 and 6, and uses the samples 0..3000 of a row. Rows of channels that are not open
 * may stay as they are. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetBufferBlocksMultiChan(int32_t first, int32_t last,
                                                                      float* blocks, int32_t count);

/* Samples start .. start+count-1 of the record to the same positions of buffer, which has 3073; nothing else
 * in it is touched. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetBufferIncremental(int32_t ch, float* buffer, int32_t count,
                                                                  int32_t start);

/* A RIS pass: count (150) samples 20 ns apart into buffer[0] .. buffer[count-1], and in *position, 0 up to
 * 20, the nanoseconds by which this pass's clock missed the trigger: sample i is the voltage (*position - 0.5
 * + 20 * i) ns behind the start of a record of 3000 ns. The clock of the converter does not follow the
 * signal, so the position differs from pass to pass, evenly spread, and the program weaves passes into a
 * record at 1 ns. *second is written and unused. *status: -1, no valid pass, or none at all; else valid. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_GetBufferRIS(int32_t ch, float* buffer, int32_t count,
                                                          float* position, float* second, int32_t* status);

/* running True: seconds between the samples of a record at the present settings, ratio / (clock * 1e6), and
 * 1e-9 in RIS; always above 0. running False: held_period, as it was given. */
CORVANTINE_DRIVER_EXPORT float CorvantineDrvr_GetSamplePeriod(int32_t running, float held_period);

/* ---- Arithmetic that the instrument's maker knows best ---------------------------------------------- */

/* A held record in a new scale. For i < count, with offsets in percent and volts per division above 0:
 *   destination[i] = (source[i] - 1.27 * old_offset) * old_volts / new_volts + 1.27 * new_offset
 * Positions from count on are left as they are; source is only read. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination,
                                                               int32_t count, float old_offset,
                                                               float new_offset, float old_volts,
                                                               float new_volts);

/* The traces of the demonstration: count (3000) samples in steps around offset, inside -127..127, another
 * form for each channel_less_one 0..3. phase is ten times the number of the pass: the trace moves with it.
 * Passes are counted from 0 and begin anew after 2^27 - 1. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_MakeSampleData(double* buffer, int32_t count, double offset,
                                                            int32_t channel_less_one, int32_t phase);

/* In place: length (2048) samples in; the magnitudes of the frequencies 0 .. half the sample rate out, in
 * entries 0..1024, the others free. scale_mode 0: linear, a sine of amplitude A whose frequency is that of a
 * bin reads A there; else in decibels relative to scale_mode (0.5 for full scale), 20 log10(A / scale_mode),
 * a finite low number where there is nothing. window: 0 rectangular, 1 Hanning, 2 Hamming, 3 triangular, 4
 * Welch; divide by the window's mean, so that the amplitude is read whichever it is. reserved points at a 0.
 */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_FFT(double* buffer, int32_t length, double scale_mode,
                                                 int32_t window, int32_t* reserved);

/* ---- And at the end --------------------------------------------------------------------------------- */

/* Not zero while the channel's port is open; 0 else. */
CORVANTINE_DRIVER_EXPORT int32_t CorvantineDrvr_PortOpen(int32_t ch);

/* The last call, with the handle of OpenDrvr: give back threads, files and memory. */
CORVANTINE_DRIVER_EXPORT void CorvantineDrvr_CloseDrvr(int32_t handle);

#ifdef __cplusplus
}
#endif
#endif
