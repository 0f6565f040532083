#include "channels/offset_null_design.h"

#include "controls/panel_design.h"

namespace {

ControlDesign DialogButton(const char* name, int left, const QString& caption, const QString& tip,
                           Colour fill, Colour back) {
    return {.kind = ControlKind::Button,
            .name = name,
            .place = {left, 180, 72, 60},
            .caption = caption,
            .tip = tip,
            .fill = fill,
            .back = back,
            .fore = 0xFFFFFF,
            .font = kPanelButtonFont};
}

} // namespace

const FormDesign& OffsetNullDesign() {
    static const FormDesign design{
        .name = "Corvantine_OffsetNullForm",
        .caption = "Offset null",
        .size = {384, 264},
        .back = 0x808080,
        .ground = "dialog",
        .font = kPanelFont,
        .controls =
            {{.kind = ControlKind::Label,
              .name = "CurrentChanText",
              .place = {20, 16, 344, 20},
              .caption = "Offset for channel 1",
              .fore = 0xFFFFFF,
              .font = {"Arial", 9.75, true},
              .properties = {{"alignment", int(Qt::AlignCenter)}}},
             {.kind = ControlKind::TextBox,
              .name = "CurrentNullText",
              .place = {20, 44, 344, 24},
              .tip = "This is the current offset (in raw ADC steps) for this range",
              .back = 0xE4ECEE,
              .fore = 0x000000,
              .properties = {{"alignment", int(Qt::AlignCenter)}, {"readOnly", true}}},
             {.kind = ControlKind::Label,
              .name = "InstructionsLabel",
              .place = {20, 80, 344, 96},
              .caption = "Use this feature to null small channel offsets that are naturally present in the "
                         "various Volts/div ranges.  Ground the probe tip now, wait for a stable reading and "
                         "then press apply null.  Do this for each Volts/div range and channel.  To remove "
                         "the null, press the cancel null button.  The data is saved in the registry so you "
                         "only need to do this once.",
              .tip = "Please note.  You MUST ground the probe tip and NOT use GND coupling, in order to null "
                     "each range independently!",
              .fore = 0xFFFFFF,
              .properties = {{"alignment", int(Qt::AlignLeft | Qt::AlignTop)}, {"wordWrap", true}}},
             DialogButton("ApplyNullButton", 34, "apply null",
                          "Apply offset null from current grounded reading for this range", 0x808000,
                          0x808080),
             DialogButton("CancelNullButton", 166, "cancel null",
                          "Set the null to zero so removing the null for this range", 0x00C000, 0x98B6BC),
             DialogButton("DoneNullButton", 278, "done", "Return to scope application", 0x808080, 0x98B6BC)},
        .timers = {{"WaitForUpdateTimer1", 50}, {"WaitForUpdateTimer2", 50}}};
    return design;
}
