#pragma once

#include "controls/knob_instances.h"
#include "controls/knob_state.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

inline constexpr int kLeft = KnobState::kLeftButton;
inline constexpr int kRight = 0;

/// Writes down what the state asks for, in order. A hook may act as the owner's handler; one that returns
/// false has deleted the control.
class Recorder : public KnobHost {
  public:
    using Log = std::vector<std::string>;
    using Hook = std::function<bool()>;

    void PlacePointer() override { log.emplace_back("pointer"); }
    void ShowText() override { log.emplace_back("text"); }
    bool RaiseChange() override { return raise("Change", onChange); }
    bool RaiseDone() override { return raise("Done", onDone); }
    bool RaiseXlateValue(float Value, QString& display) override {
        xlated = Value;
        log.emplace_back("Xlate");
        return onXlate ? onXlate(display) : true;
    }
    void EnableTimeout() override { timeout = true; }
    void DisableTimeout() override { timeout = false; }

    Log take() { return std::exchange(log, {}); }
    /// The events alone.
    Log events() {
        std::erase_if(log,
                      [](const std::string& e) { return e == "pointer" || e == "text" || e == "Xlate"; });
        return take();
    }

    Log log;
    Hook onChange;
    Hook onDone;
    std::function<bool(QString&)> onXlate;
    float xlated = 0;
    bool timeout = false;

  private:
    bool raise(const char* event, const Hook& hook) {
        log.emplace_back(event);
        return hook ? hook() : true;
    }
};

class KnobStateTest : public testing::Test {
  protected:
    KnobStateTest() {
        design.KnobStartAngle = -45;
        design.KnobStopAngle = 225;
        state.SetCentre({100, 100});
        state.UpdateScrollerLimits();
    }

    /// The mouse's place that many degrees behind the start angle, at a radius.
    QPointF at(double turned, double radius = 20) const {
        return knob::PointAt({100, 100}, radius, design.KnobStartAngle + turned);
    }
    bool press(double turned) { return state.MousePress(kLeft, at(turned)); }
    bool move(double turned) { return state.MouseMove(kLeft, 0, at(turned)); }
    /// A drag under way from that place, nothing written down.
    void drag(double turned) {
        press(turned);
        move(turned + 0.1);
        move(turned);
        events.take();
    }

    KnobDesign design;
    Recorder events;
    KnobState state{design, events};
};
