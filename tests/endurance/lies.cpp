#include "endurance/lies.h"

#include "endurance/lying_values.h"

#include <array>
#include <string_view>

namespace {

using enum Part;

constexpr std::array kOperations{
#define CORVANTINE_NAME(operation) std::string_view(#operation),
    CORVANTINE_OPERATIONS(CORVANTINE_NAME)
#undef CORVANTINE_NAME
};

constexpr std::array<std::string_view, 8> kParts{"deed",        "whole", "second whole", "real",
                                                 "second real", "text",  "length",       "samples"};

struct Shape {
    Operation operation;
    std::vector<Part> parts;
};

/// What each operation says to the program; every one may also not do what it is asked for.
const std::vector<Shape>& Shapes() {
    using enum Operation;
    static const std::vector<Shape> shapes{
        {OpenDrvr, {Whole}},
        {GetSampleDepth, {Whole}},
        {DrvrIssue, {Text}},
        {Enumerate,
         {Whole, SecondWhole, Length}}, // the count, and the port and channel that it was asked for
        {GetProductName, {Text, Length}},
        {GetSerialNumber, {Text, Length}},
        {GetHWRev, {Whole}},
        {GetPortNumber, {Whole}},
        {GetControllerRev, {Whole}},
        {SetDemoMode, {}},
        {OpenAndReset, {Whole}},
        {SetTrigMaster, {}},
        {SetDetectLine, {}},
        {GetDetectLine, {Whole}},
        {Close, {}},
        {InitScope, {}},
        {GetRISBand, {Whole, SecondWhole}},
        {GetTriggerDACOffset, {Whole}},
        {GetRawChannelOffset, {Real}},
        {GetOffsetDACScale, {Real}},
        {SetUpFrontEnd, {}},
        {SetOffset, {}},
        {SetCalSource, {}},
        {SetLEDMode, {}},
        {SetBaseAdcClk, {}},
        {SetDecimationRatio, {}},
        {SetRISMode, {}},
        {SetTriggerDelay, {}},
        {SetTrigThresh, {}},
        {SetTrigType, {}},
        {SetNormTrig, {}},
        {SetPreTrigDepth, {}},
        {AcquisitionStart, {}},
        {AcquisitionEnd, {}},
        {GetAcquistionState, {Whole}},
        {GetTriggeredStatus, {Whole}},
        {GetSamplesSinceTrigger, {Whole}},
        {GetBufferBlocksMultiChan, {Samples}},
        {GetBufferIncremental, {Samples}},
        {GetBufferRIS, {Samples, Real, SecondReal, Whole}},
        {GetSamplePeriod, {Real}},
        {ReScaleSampleData, {Samples}},
        {MakeSampleData, {Samples}},
        {FFT, {Samples, Whole}},
        {PortOpen, {Whole}},
        {CloseDrvr, {}},
    };
    return shapes;
}

std::vector<Lie> MakeLies() {
    std::vector<Lie> lies;
    for (const Shape& shape : Shapes()) {
        lies.push_back({shape.operation, Deed, 0});
        for (const Part part : shape.parts) {
            for (int way = 0; way < static_cast<int>(WaysOf(part).size()); ++way) {
                lies.push_back({shape.operation, part, way});
            }
        }
    }
    return lies;
}

} // namespace

const std::vector<Lie>& AllLies() {
    static const std::vector<Lie> lies = MakeLies();
    return lies;
}

std::string NameOf(const Lie& lie) {
    return std::string(kOperations[static_cast<std::size_t>(lie.operation)]) + ", " +
           std::string(kParts[static_cast<std::size_t>(lie.part)]) + ": " +
           std::string(WaysOf(lie.part)[static_cast<std::size_t>(lie.way)]);
}
