/* The least driver that shows a trace, to be copied: one module whose input sees a sine of 0.2 V and 100 kHz.
 * Put your instrument where the word INSTRUMENT stands; the header says what each function owes. What a
 * driver has to compute whatever its instrument is in arithmetic.c.
 *
 *     cc -O2 -shared -fPIC -I FOLDER_OF_THE_HEADER skeleton.c arithmetic.c -o libskeleton.so -lm
 */
#include "corvantine_driver.h"

#include <math.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum { DEPTH = 3000, RIS_SAMPLES = 150, PORT = 3 };
static const double TURN = 6.283185307179586, STEPS_PER_PERCENT = 1.27, AMPLITUDE = 0.2, FREQUENCY = 100e3;

static struct {
    int slot, demo, open[5], pulls_line;
    double steps_per_volt, offset, threshold, depth, delay; /* steps, steps, parts of the record, seconds */
    int type, normal, megahertz, ratio, ris;
    int running, fired, taken; /* taken: samples of the record so far */
    double armed, phase, position;
} scope;

static double seconds(void) {
    struct timespec now;
    timespec_get(&now, TIME_UTC);
    return (double)now.tv_sec + (double)now.tv_nsec * 1e-9;
}
static int is_open(int32_t ch) { return ch >= 1 && ch <= 4 && scope.open[ch]; }
static int is_module(int32_t ch) { return is_open(ch) && !scope.demo; }
static double uniform(void) { return rand() / (RAND_MAX + 1.0); }
static double period(void) { return scope.ris ? 1e-9 : scope.ratio / (scope.megahertz * 1e6); }
static double swing(void) { return AMPLITUDE * scope.steps_per_volt; }
static int number(int32_t ch, int value) { return ch == scope.slot ? value : 0; }
static void name(int32_t ch, const char* text, uint8_t* buffer, int32_t* length) {
    *length = ch == scope.slot ? (int32_t)strlen(text) : 0;
    memcpy(buffer, text, (size_t)*length);
}
/* INSTRUMENT: the signal as the converter sees it at a position of the record, which may lie between samples.
 */
static float sample(double at) {
    const double time = (at - scope.depth * DEPTH) * period() + scope.delay;
    const double steps = scope.offset + swing() * sin(TURN * FREQUENCY * time + scope.phase);
    return (float)fmax(-127, fmin(127, round(steps)));
}
/* INSTRUMENT: whether the trigger fires, and at which phase of the signal. */
static void look_for_trigger(void) {
    const double level = swing() > 0 ? (scope.threshold - scope.offset) / swing() : 0;
    const int above = scope.offset + swing() > scope.threshold,
              below = scope.offset - swing() < scope.threshold;
    scope.fired = !scope.normal || (above && scope.type != 0 && (below || scope.type == 1)) ||
                  (below && scope.type == 0);
    scope.phase = !scope.normal || scope.type < 2 ? TURN * uniform() : asin(fmax(-1, fmin(1, level)));
    scope.phase = scope.normal && scope.type == 2 ? TURN / 2 - scope.phase : scope.phase;
}
/* INSTRUMENT: how much of the record is there. Time passes as it would for a converter. */
static int samples_taken(void) {
    if (scope.running) {
        const double passed = (seconds() - scope.armed) / period();
        const double length = scope.ris ? DEPTH : DEPTH + scope.delay / period();
        if (!scope.fired) {
            look_for_trigger();
        }
        scope.taken = (int)fmax(0, fmin(passed, scope.fired ? DEPTH : scope.depth * DEPTH));
        scope.running = !scope.fired || passed < length;
    }
    return scope.taken;
}

/* The library and what is on the bus */
int32_t CorvantineDrvr_OpenDrvr(void) {
    memset(&scope, 0, sizeof scope);
    scope.slot = scope.ratio = 1;
    scope.megahertz = 50;
    return 1;
}
int32_t CorvantineDrvr_GetSampleDepth(void) { return DEPTH; }
void CorvantineDrvr_DrvrIssue(char text[100]) { strcpy(text, "Corvantine driver skeleton"); }
int32_t CorvantineDrvr_Enumerate(int32_t* port, int32_t* channel) { /* INSTRUMENT: look for it */
    scope.slot = *port == PORT && *channel >= 1 && *channel <= 4 ? *channel : 1;
    return 1;
}
void CorvantineDrvr_GetProductName(int32_t ch, uint8_t buffer[101], int32_t* length) {
    name(ch, "Corvantine", buffer, length);
}
void CorvantineDrvr_GetSerialNumber(int32_t ch, uint8_t buffer[101], int32_t* length) {
    name(ch, "SKELETON1", buffer, length);
}
void CorvantineDrvr_GetHWRev(int32_t ch, int32_t* out) { *out = number(ch, 0x10); }
void CorvantineDrvr_GetPortNumber(int32_t ch, int32_t* out) { *out = number(ch, PORT); }
void CorvantineDrvr_GetControllerRev(int32_t ch, int32_t* out) { *out = number(ch, 0x10); }
void CorvantineDrvr_SetDemoMode(int32_t on) { scope.demo = on != 0; }
int32_t CorvantineDrvr_OpenAndReset(int32_t ch) { /* INSTRUMENT: open its port */
    if (ch < 1 || ch > 4 || (!scope.demo && ch != scope.slot)) {
        return CORVANTINE_FALSE;
    }
    scope.steps_per_volt = 127 / 30.0;
    scope.running = scope.taken = scope.pulls_line = 0;
    return scope.open[ch] = CORVANTINE_TRUE;
}
void CorvantineDrvr_SetTrigMaster(int32_t ch, int32_t on) { (void)ch, (void)on; } /* it is the only one */
void CorvantineDrvr_SetDetectLine(int32_t ch, int32_t drive, int32_t release) {
    (void)release;
    scope.pulls_line = is_module(ch) ? drive : scope.pulls_line;
}
int32_t CorvantineDrvr_GetDetectLine(int32_t ch) { return is_module(ch) && !scope.pulls_line; }
void CorvantineDrvr_Close(int32_t ch) { /* INSTRUMENT: close its port */
    if (is_open(ch)) {
        scope.open[ch] = scope.running = 0;
    }
}
void CorvantineDrvr_InitScope(int32_t ch, int32_t is_master) { (void)ch, (void)is_master; }
void CorvantineDrvr_GetRISBand(int32_t ch, int32_t* first, int32_t* second) {
    (void)ch, *first = *second = 0;
}
void CorvantineDrvr_GetTriggerDACOffset(int32_t ch, int32_t* offset) { (void)ch, *offset = 0; }
void CorvantineDrvr_GetRawChannelOffset(int32_t ch, float* out) { (void)ch, *out = 0; }
void CorvantineDrvr_GetOffsetDACScale(int32_t ch, float* out) { (void)ch, *out = 1; }

/* INSTRUMENT: front end, clocks, trigger */
void CorvantineDrvr_SetUpFrontEnd(int32_t ch, int32_t range, int32_t dc, int32_t gnd, int32_t zero) {
    (void)dc, (void)zero; /* a sine around 0 V looks the same with either */
    if (is_module(ch) && range >= 0 && range <= 2) {
        scope.steps_per_volt = gnd ? 0 : 127 / (0.3 * pow(10, range));
    }
}
void CorvantineDrvr_SetOffset(int32_t ch, float percent) {
    scope.offset = is_module(ch) && fabs(percent) <= 101 ? percent * STEPS_PER_PERCENT : scope.offset;
}
void CorvantineDrvr_SetCalSource(int32_t ch, int32_t value) { (void)ch, (void)value; }
void CorvantineDrvr_SetLEDMode(int32_t ch, int32_t value) { (void)ch, (void)value; }
void CorvantineDrvr_SetBaseAdcClk(int32_t ch, int32_t megahertz) {
    scope.megahertz = is_open(ch) && megahertz > 0 ? megahertz : scope.megahertz;
}
void CorvantineDrvr_SetDecimationRatio(int32_t ch, int32_t ratio) {
    scope.ratio = is_open(ch) && ratio > 0 ? ratio : scope.ratio;
}
void CorvantineDrvr_SetRISMode(int32_t ch, int32_t on) { scope.ris = is_open(ch) ? on != 0 : scope.ris; }
void CorvantineDrvr_SetTriggerDelay(int32_t ch, float delay) {
    scope.delay = is_module(ch) && delay >= 0 && delay < 1e5F ? delay : scope.delay;
}
void CorvantineDrvr_SetTrigThresh(int32_t ch, float percent) {
    scope.threshold = is_module(ch) && fabs(percent) <= 101 ? percent * STEPS_PER_PERCENT : scope.threshold;
}
void CorvantineDrvr_SetTrigType(int32_t ch, int32_t type) {
    scope.type = is_module(ch) && type >= 0 && type <= 3 ? type : scope.type;
}
void CorvantineDrvr_SetNormTrig(int32_t ch, int32_t on) { scope.normal = is_module(ch) ? on : scope.normal; }
void CorvantineDrvr_SetPreTrigDepth(int32_t ch, float fraction) {
    scope.depth = is_module(ch) && fraction >= 0 && fraction <= 0.99F ? fraction : scope.depth;
}

/* INSTRUMENT: acquisition */
void CorvantineDrvr_AcquisitionStart(int32_t ch) {
    if (is_module(ch)) {
        scope.armed = seconds();
        scope.running = 1;
        scope.fired = scope.taken = 0;
        scope.position = 20 * uniform();
    }
}
void CorvantineDrvr_AcquisitionEnd(int32_t ch) {
    if (is_module(ch)) {
        samples_taken();
        scope.running = 0;
    }
}
int32_t CorvantineDrvr_GetAcquistionState(int32_t ch) {
    return is_module(ch) && (samples_taken(), scope.running);
}
int32_t CorvantineDrvr_GetTriggeredStatus(int32_t ch) {
    return is_module(ch) && (samples_taken(), scope.fired);
}
int32_t CorvantineDrvr_GetSamplesSinceTrigger(int32_t ch) { return is_module(ch) ? samples_taken() : 0; }
void CorvantineDrvr_GetBufferBlocksMultiChan(int32_t first, int32_t last, float* blocks, int32_t count) {
    int i;
    if (is_module(scope.slot) && first <= scope.slot && scope.slot <= last) {
        for (i = 0; i / 512 < count && i < CORVANTINE_ROW; ++i) {
            blocks[(scope.slot - 1) * CORVANTINE_ROW + i] = sample(i);
        }
    }
}
void CorvantineDrvr_GetBufferIncremental(int32_t ch, float* buffer, int32_t count, int32_t start) {
    int i;
    for (i = 0; is_module(ch) && start >= 0 && i < count && start < CORVANTINE_BUFFER - i; ++i) {
        buffer[start + i] = sample(start + i);
    }
}
void CorvantineDrvr_GetBufferRIS(int32_t ch, float* buffer, int32_t count, float* position, float* second,
                                 int32_t* status) {
    int i;
    *status = is_module(ch) && scope.ris && scope.taken == DEPTH ? 0 : -1;
    *position = (float)scope.position;
    *second = 0;
    for (i = 0; *status != -1 && i < count && i < RIS_SAMPLES; ++i) {
        buffer[i] = sample(scope.position - 0.5 + 20 * i);
    }
}
float CorvantineDrvr_GetSamplePeriod(int32_t running, float held_period) {
    return running ? (float)period() : held_period;
}

int32_t CorvantineDrvr_PortOpen(int32_t ch) { return is_module(ch); }
void CorvantineDrvr_CloseDrvr(int32_t handle) {
    (void)handle;
    memset(scope.open, 0, sizeof scope.open);
}
