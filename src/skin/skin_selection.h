#pragma once

#include "frame/record/colour.h"
#include "skin/dib_section.h"
#include "skin/dib_section_region.h"
#include "skin/skin_colour.h"

#include <QObject>
#include <QString>
#include <array>
#include <functional>

class ButtonControl1;
class DebugLog;
class Form;
class KnobControl1;
class Picture;
class QListWidget;
class QTimer;
struct Record;
class SliderControl1;

/// Shapes the form that holds the picture control by the control's picture: the picture, at the control's
/// size, goes into the shared section, its outline into the region and onto the form. False when there is
/// no picture or no memory for it; the form then keeps the shape it has.
bool SetWindowEffects(DebugLog& log, cDIBSection& sharedDIB, const Picture& image, Colour transparent,
                      cDIBSectionRegion& region);

/// The controls of the main form that a skin paints.
struct SkinControls {
    Form* main = nullptr;
    Picture* Image1 = nullptr; ///< the face
    QListWidget* SkinFiles = nullptr;
    QListWidget* SkinColourList = nullptr;
    Picture* SkinColourImage = nullptr;
    QTimer* RunTimer = nullptr;
    Picture* VertCursorBar = nullptr;
    Picture* HorizCursorBar = nullptr;
    std::array<ButtonControl1*, 2> runButtons{}; ///< RunButton, OnceButton: they stay visible
    std::array<ButtonControl1*, 9> buttons{};    ///< TrigModeButton and TrigTypeButton first
    std::array<KnobControl1*, 4> knobs{};        ///< in the order of hiding
    std::array<SliderControl1*, 3> sliders{};

    static SkinControls Of(Form& main);
};

/// The skins of the program: which there are, which is on, and how one is put on.
class SkinSelection : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> doEvents; ///< lets pending events be processed
        std::function<void(int milliseconds)> sleep;
        std::function<bool()> closing; ///< the program ends: what is left of a change is not worth the time
    };

    static constexpr int kFirstNameCharacter = 17; ///< of a file name, counted from 1
    static constexpr int kSettleTime = 100;        ///< milliseconds

    /// folder: holds the folder "skins". Calls that are left out get the toolkit's own.
    SkinSelection(Record& record, DebugLog& log, const SkinControls& controls, QString folder,
                  cDIBSection& sharedDIB, cDIBSectionRegion& mainRegion, Calls calls = {});

    /// Lists the skins and selects the first. A face that has no picture yet gets that of the first skin that
    /// can be had, or a plain one.
    void ListSkins();
    /// Once a plain face is in the shared section: gives the controls its colours, as a skin would.
    void DressPlainFace();
    /// Paints the face with the skin of SkinIndex, or as it is for a negative index, and gives each control
    /// the colour that lies under its centre. A skin that cannot be had leaves the old face as it was.
    void SetControlColorsToMatchSkin();
    void SkinColourImage_Click();

    Colour GetDIBPixel(int X, int Y) const;
    /// The skin's colour under the centre of a control of the main form.
    Colour SkinColourAt(const QWidget& control) const;
    /// The same, as bright as a knob's face is.
    Colour BrightenedSkinColour(const QWidget& control) const;

    int SkinIndex = 0; ///< of the current skin in SkinColourList; -1: the face as it is

  private:
    QString FileOf(const QString& name) const;
    bool ApplySkin();
    void HideControls();
    void ColourControls();
    bool ShowControls();
    bool ChangeFace(); ///< false: given up, the program ends
    bool GoesOn();

    Record& record_;
    DebugLog& log_;
    SkinControls controls_;
    QString folder_;
    cDIBSection& sharedDIB_;
    cDIBSectionRegion& mainRegion_;
    Calls calls_;
    bool busy_ = false;
    bool plainFace_ = false;
};
