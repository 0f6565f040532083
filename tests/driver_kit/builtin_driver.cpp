// The driver that is built into the program, as a library, so that it can be checked like any other.

#include "driver/builtin_backend.h"

#include "corvantine_driver.h"

namespace {

BuiltinBackend builtin;

} // namespace

std::int32_t CorvantineDrvr_OpenDrvr() { return builtin.OpenDrvr(); }
std::int32_t CorvantineDrvr_GetSampleDepth() { return builtin.GetSampleDepth(); }
void CorvantineDrvr_DrvrIssue(char text[100]) { builtin.DrvrIssue(text); }
std::int32_t CorvantineDrvr_Enumerate(std::int32_t* port, std::int32_t* channel) {
    return builtin.Enumerate(port, channel);
}
void CorvantineDrvr_GetProductName(std::int32_t ch, std::uint8_t buffer[101], std::int32_t* length) {
    builtin.GetProductName(ch, buffer, length);
}
void CorvantineDrvr_GetSerialNumber(std::int32_t ch, std::uint8_t buffer[101], std::int32_t* length) {
    builtin.GetSerialNumber(ch, buffer, length);
}
void CorvantineDrvr_GetHWRev(std::int32_t ch, std::int32_t* out) { builtin.GetHWRev(ch, out); }
void CorvantineDrvr_GetPortNumber(std::int32_t ch, std::int32_t* out) { builtin.GetPortNumber(ch, out); }
void CorvantineDrvr_GetControllerRev(std::int32_t ch, std::int32_t* out) {
    builtin.GetControllerRev(ch, out);
}
void CorvantineDrvr_SetDemoMode(std::int32_t on) { builtin.SetDemoMode(on); }
std::int32_t CorvantineDrvr_OpenAndReset(std::int32_t ch) { return builtin.OpenAndReset(ch); }
void CorvantineDrvr_SetTrigMaster(std::int32_t ch, std::int32_t on) { builtin.SetTrigMaster(ch, on); }
void CorvantineDrvr_SetDetectLine(std::int32_t ch, std::int32_t drive, std::int32_t release) {
    builtin.SetDetectLine(ch, drive, release);
}
std::int32_t CorvantineDrvr_GetDetectLine(std::int32_t ch) { return builtin.GetDetectLine(ch); }
void CorvantineDrvr_Close(std::int32_t ch) { builtin.Close(ch); }
void CorvantineDrvr_InitScope(std::int32_t ch, std::int32_t is_master) { builtin.InitScope(ch, is_master); }
void CorvantineDrvr_GetRISBand(std::int32_t ch, std::int32_t* first, std::int32_t* second) {
    builtin.GetRISBand(ch, first, second);
}
void CorvantineDrvr_GetTriggerDACOffset(std::int32_t ch, std::int32_t* offset) {
    builtin.GetTriggerDACOffset(ch, offset);
}
void CorvantineDrvr_GetRawChannelOffset(std::int32_t ch, float* out) { builtin.GetRawChannelOffset(ch, out); }
void CorvantineDrvr_GetOffsetDACScale(std::int32_t ch, float* out) { builtin.GetOffsetDACScale(ch, out); }
void CorvantineDrvr_SetUpFrontEnd(std::int32_t ch, std::int32_t range, std::int32_t dc, std::int32_t gnd,
                                  std::int32_t zero) {
    builtin.SetUpFrontEnd(ch, range, dc, gnd, zero);
}
void CorvantineDrvr_SetOffset(std::int32_t ch, float percent) { builtin.SetOffset(ch, percent); }
void CorvantineDrvr_SetCalSource(std::int32_t ch, std::int32_t value) { builtin.SetCalSource(ch, value); }
void CorvantineDrvr_SetLEDMode(std::int32_t ch, std::int32_t value) { builtin.SetLEDMode(ch, value); }
void CorvantineDrvr_SetBaseAdcClk(std::int32_t ch, std::int32_t megahertz) {
    builtin.SetBaseAdcClk(ch, megahertz);
}
void CorvantineDrvr_SetDecimationRatio(std::int32_t ch, std::int32_t ratio) {
    builtin.SetDecimationRatio(ch, ratio);
}
void CorvantineDrvr_SetRISMode(std::int32_t ch, std::int32_t on) { builtin.SetRISMode(ch, on); }
void CorvantineDrvr_SetTriggerDelay(std::int32_t ch, float seconds) { builtin.SetTriggerDelay(ch, seconds); }
void CorvantineDrvr_SetTrigThresh(std::int32_t ch, float percent) { builtin.SetTrigThresh(ch, percent); }
void CorvantineDrvr_SetTrigType(std::int32_t ch, std::int32_t type) { builtin.SetTrigType(ch, type); }
void CorvantineDrvr_SetNormTrig(std::int32_t ch, std::int32_t on) { builtin.SetNormTrig(ch, on); }
void CorvantineDrvr_SetPreTrigDepth(std::int32_t ch, float fraction) {
    builtin.SetPreTrigDepth(ch, fraction);
}
void CorvantineDrvr_AcquisitionStart(std::int32_t ch) { builtin.AcquisitionStart(ch); }
void CorvantineDrvr_AcquisitionEnd(std::int32_t ch) { builtin.AcquisitionEnd(ch); }
std::int32_t CorvantineDrvr_GetAcquistionState(std::int32_t ch) { return builtin.GetAcquistionState(ch); }
std::int32_t CorvantineDrvr_GetTriggeredStatus(std::int32_t ch) { return builtin.GetTriggeredStatus(ch); }
std::int32_t CorvantineDrvr_GetSamplesSinceTrigger(std::int32_t ch) {
    return builtin.GetSamplesSinceTrigger(ch);
}
void CorvantineDrvr_GetBufferBlocksMultiChan(std::int32_t first, std::int32_t last, float* blocks,
                                             std::int32_t count) {
    builtin.GetBufferBlocksMultiChan(first, last, blocks, count);
}
void CorvantineDrvr_GetBufferIncremental(std::int32_t ch, float* buffer, std::int32_t count,
                                         std::int32_t start) {
    builtin.GetBufferIncremental(ch, buffer, count, start);
}
void CorvantineDrvr_GetBufferRIS(std::int32_t ch, float* buffer, std::int32_t count, float* position,
                                 float* second, std::int32_t* status) {
    builtin.GetBufferRIS(ch, buffer, count, position, second, status);
}
float CorvantineDrvr_GetSamplePeriod(std::int32_t running, float held_period) {
    return builtin.GetSamplePeriod(running, held_period);
}
void CorvantineDrvr_ReScaleSampleData(const float* source, float* destination, std::int32_t count,
                                      float old_offset, float new_offset, float old_volts, float new_volts) {
    builtin.ReScaleSampleData(source, destination, count, old_offset, new_offset, old_volts, new_volts);
}
void CorvantineDrvr_MakeSampleData(double* buffer, std::int32_t count, double offset,
                                   std::int32_t channel_less_one, std::int32_t phase) {
    builtin.MakeSampleData(buffer, count, offset, channel_less_one, phase);
}
void CorvantineDrvr_FFT(double* buffer, std::int32_t length, double scale_mode, std::int32_t window,
                        std::int32_t* reserved) {
    builtin.FFT(buffer, length, scale_mode, window, reserved);
}
std::int32_t CorvantineDrvr_PortOpen(std::int32_t ch) { return builtin.PortOpen(ch); }
void CorvantineDrvr_CloseDrvr(std::int32_t handle) { builtin.CloseDrvr(handle); }
