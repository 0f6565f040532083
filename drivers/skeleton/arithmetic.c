/* The arithmetic of a driver, which goes with any instrument. */
#include "corvantine_driver.h"

#include <complex.h>
#include <math.h>

static const double TURN = 6.283185307179586, STEPS_PER_PERCENT = 1.27;

void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination, int32_t count,
                                      float old_offset, float new_offset, float old_volts, float new_volts) {
    const double ratio = new_volts > 0 ? old_volts / new_volts : 1;
    int i;
    for (i = 0; i < count; ++i) {
        destination[i] =
            (float)((source[i] - old_offset * STEPS_PER_PERCENT) * ratio + new_offset * STEPS_PER_PERCENT);
    }
}
void CorvantineDrvr_MakeSampleData(double* buffer, int32_t count, double offset, int32_t channel_less_one,
                                   int32_t phase) {
    const int cycles = 2 + 3 * (channel_less_one & 3);
    int i;
    for (i = 0; i < count; ++i) {
        buffer[i] = fmax(-127, fmin(127, offset + 30 * sin(TURN * cycles * (i + phase % count) / count)));
    }
}
static void transform(const double* in, double complex* out, int count, int stride) {
    int i;
    *out = *in;
    if (count > 1) {
        transform(in, out, count / 2, 2 * stride);
        transform(in + stride, out + count / 2, count / 2, 2 * stride);
    }
    for (i = 0; i < count / 2; ++i) {
        const double complex odd = cexp(-I * (TURN * i / count)) * out[count / 2 + i];
        out[count / 2 + i] = out[i] - odd;
        out[i] += odd;
    }
}
void CorvantineDrvr_FFT(double* buffer, int32_t length, double scale_mode, int32_t window,
                        int32_t* reserved) {
    static double complex bins[CORVANTINE_FFT_LENGTH];
    double sum = 0;
    int i;
    (void)reserved;
    if (length != CORVANTINE_FFT_LENGTH) {
        return;
    }
    for (i = 0; i < length; ++i) {
        const double u = 2.0 * i / length - 1, cosine = cos(TURN * i / length);
        const double weights[] = {1, 0.5 - 0.5 * cosine, 0.54 - 0.46 * cosine, 1 - fabs(u), 1 - u * u};
        const double weight = weights[window >= 0 && window <= 4 ? window : 0];
        buffer[i] *= weight;
        sum += weight;
    }
    transform(buffer, bins, length, 1);
    for (i = 0; i <= length / 2; ++i) {
        const double magnitude = cabs(bins[i]) * 2 / sum;
        buffer[i] = scale_mode == 0 ? magnitude : 20 * log10(fmax(magnitude, 1e-15) / fabs(scale_mode));
    }
}
