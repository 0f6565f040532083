#include "controls/knob_design.h"

namespace {

constexpr int kCentred = 2; // of the text box

/// Calls use(key, member) for the design keys in their order.
template <class Use> void EachKey(Use use) {
    use("KnobValue", &KnobDesign::KnobValue);
    use("KnobBand1Start", &KnobDesign::KnobBand1Start);
    use("KnobBand1Stop", &KnobDesign::KnobBand1Stop);
    use("KnobBand1Color", &KnobDesign::KnobBand1Color);
    use("KnobTextColor", &KnobDesign::KnobTextColor);
    use("KnobAnticlock", &KnobDesign::KnobAnticlock);
    use("KnobZeroButton", &KnobDesign::KnobZeroButton);
    use("KnobZeroButtonValue", &KnobDesign::KnobZeroButtonValue);
    use("KnobApplyLimit", &KnobDesign::KnobApplyLimit);
    use("KnobLowerLimit", &KnobDesign::KnobLowerLimit);
    use("KnobUpperLimit", &KnobDesign::KnobUpperLimit);
    use("KnobMin", &KnobDesign::KnobMin);
    use("KnobMax", &KnobDesign::KnobMax);
    use("KnobStartAngle", &KnobDesign::KnobStartAngle);
    use("KnobStopAngle", &KnobDesign::KnobStopAngle);
    use("KnobTimeout", &KnobDesign::KnobTimeout);
    use("KnobFillColor", &KnobDesign::KnobFillColor);
    use("KnobBorderColor", &KnobDesign::KnobBorderColor);
    use("KnobMarkerColor", &KnobDesign::KnobMarkerColor);
    use("KnobValueFormat", &KnobDesign::KnobValueFormat);
    use("KnobMarkers", &KnobDesign::KnobMarkers);
    use("KnobValueEditable", &KnobDesign::KnobValueEditable);
    use("KnobValueQuantized", &KnobDesign::KnobValueQuantized);
    use("KnobValueAlign", &KnobDesign::KnobValueAlign);
    use("KnobVisible", &KnobDesign::KnobVisible);
}

} // namespace

KnobDesign ReadKnobDesign(const QVariantMap& bag) {
    KnobDesign design;
    design.KnobZeroButtonValue = design.KnobLowerLimit = ReadKey(bag, "KnobMin", design.KnobMin);
    design.KnobUpperLimit = ReadKey(bag, "KnobMax", design.KnobMax);
    EachKey([&](const char* key, auto field) { design.*field = ReadKey(bag, key, design.*field); });
    design.KnobFont = ReadFontKeys(bag, QStringLiteral("KnobFont"), kKnobFontPoints);
    return design;
}

QVariantMap WriteKnobDesign(const KnobDesign& design, int textAlignment) {
    KnobDesign standard;
    standard.KnobBand1Start = standard.KnobBand1Stop = 0;
    standard.KnobLowerLimit = 0;
    standard.KnobUpperLimit = 100;
    standard.KnobZeroButtonValue = design.KnobMin;
    QVariantMap bag;
    EachKey([&](const char* key, auto field) { WriteKey(bag, key, design.*field, standard.*field); });
    WriteFontKeys(bag, QStringLiteral("KnobFont"), design.KnobFont, kKnobFontPoints);
    WriteKey(bag, "Knobment", textAlignment, kCentred);
    return bag;
}
