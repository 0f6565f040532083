#pragma once

#include "controls/knob_arithmetic.h"
#include "controls/knob_design.h"

#include <QPointF>
#include <optional>

/// What a knob's state asks of the control that shows it. The functions that return a bool raise events to
/// the owner, whose handler may delete the control: false says that it did and nothing may be touched any
/// more.
class KnobHost {
  public:
    virtual void PlacePointer() = 0;
    virtual void ShowText() = 0;
    virtual bool RaiseChange() = 0;
    virtual bool RaiseDone() = 0;
    virtual bool RaiseXlateValue(float Value, QString& Display) = 0;
    virtual void EnableTimeout() = 0; ///< one that runs already is not put back
    virtual void DisableTimeout() = 0;

  protected:
    ~KnobHost() = default;
};

/// The value, pointer and mouse of a knob, free of widgets. The store of the value is the scroller, a 16-bit
/// integer that an anticlockwise knob counts from the other end.
class KnobState {
  public:
    /// Both must outlive the state; the design may change at any time.
    KnobState(const KnobDesign& design, KnobHost& host) : design_(design), host_(host) {}
    KnobState(const KnobState&) = delete;
    KnobState& operator=(const KnobState&) = delete;

    // Every function that returns a bool returns false when the control was deleted meanwhile.

    /// Where the pointer turns as it is drawn, in the coordinates of the mouse.
    void SetCentre(QPointF centre) { centre_ = centre; }

    int KnobValue() const;
    /// Clears `Dragging` and stores a value within KnobMin..KnobMax without an event; says whether the store
    /// changed. Any other value is ignored.
    bool PutKnobValue(int value);
    void PutLowerLimit(int value);
    void PutUpperLimit(int value);

    int ScrollerValue() const { return scroller_; }
    int ScrollerMin() const;
    int ScrollerMax() const;
    int LargeChange() const { return largeChange_; }
    /// Takes KnobMin and KnobMax over; the stored value stays within them.
    void UpdateScrollerLimits();
    /// Sets the scroller as a user does; runs the change path if that changes it.
    bool MoveScroller(int value);
    /// Turns the knob by that many steps of KnobValue, as far as its limits let it.
    bool Step(std::int64_t steps);

    /// buttons: 1 for the left button alone. shift: 0, or kFirstMotion from the press.
    bool MousePress(int button, QPointF at);
    bool MouseMove(int button, int shift, QPointF at);
    bool MouseRelease();
    /// The handler of `Timeout`.
    bool Timeout();

    bool RunChangePath();
    bool RefreshValue();
    /// Value and position of the scroller without an event.
    void Synchronise();

    float Value() const { return Value_; }
    float Position() const { return Position_; }
    bool Dragging() const { return Dragging_; }
    knob::Stops Stuck() const { return stuck_; }
    float LastAngle() const { return LastAngle_; }
    const QString& KnobXlatedValue() const { return KnobXlatedValue_; }

    static constexpr int kLeftButton = 1;
    static constexpr int kFirstMotion = 99;

  private:
    struct Turn {
        float AngleReturned;
        float position;
        bool DirectionIncreasing;
    };
    Turn Follow(QPointF at, bool firstCall);
    int WithinLimits(int scroller) const;
    int ToScroller(std::int64_t value) const;
    bool RaiseChange();
    bool RaiseDone();

    const KnobDesign& design_;
    KnobHost& host_;
    QPointF centre_;
    int scroller_ = 0;
    int largeChange_ = 1;
    std::optional<int> EffectiveLower_; ///< in the scroller's sense; KnobMin before the first put
    std::optional<int> EffectiveUpper_; ///< KnobMax before the first put

    float Value_ = 0;
    float Position_ = 0;
    QString KnobXlatedValue_;
    QPointF LastMouse_;
    float LastAngle_ = 0; ///< 0 when no drag is under way
    knob::Stops stuck_;
    bool Dragging_ = false;
    bool ChangeSuppressed_ = false;
    bool InXlate_ = false;
    bool raisingChange_ = false;
    bool raisingDone_ = false;
    bool doneOwed_ = false; ///< to a release that came while Done was being raised
    bool released_ = true;  ///< no press is followed
};
