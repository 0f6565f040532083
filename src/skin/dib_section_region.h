#pragma once

#include "controls/colour.h"

#include <QEvent>
#include <QPointer>
#include <QRegion>
#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

class DebugLog;
class cDIBSection;

/// What Save and LoadFromResource raise.
struct RegionError {
    int number;
    QString source;
    QString text;
};

/// Gives a window its shape and draws it again; null takes the shape away.
using ShapeWindow = std::function<void(QWidget* window, const QRegion* shape)>;

/// Shapes a window by its mask. The toolkit takes an empty mask for none at all, so an empty shape becomes a
/// mask beside the window, which shows nothing of it. The window is told by a ShapeChangedEvent, so that
/// whatever carries it can follow.
void ShapeByMask(QWidget* window, const QRegion* shape);
QEvent::Type ShapeChangedEvent();

/// A window outline built from a picture, and the windows that it is applied to.
class cDIBSectionRegion {
  public:
    explicit cDIBSectionRegion(DebugLog& log, ShapeWindow shape = ShapeByMask);
    ~cDIBSectionRegion();
    cDIBSectionRegion(const cDIBSectionRegion&) = delete;
    cDIBSectionRegion& operator=(const cDIBSectionRegion&) = delete;

    bool Applied(const QWidget* hWnd) const;
    /// True on a window that is already in the list shapes the last window of the list again, whichever was
    /// asked for. False takes the shape from any window.
    void SetApplied(QWidget* hWnd, bool bState);
    int AppliedToCount() const { return static_cast<int>(windows_.size()); }
    /// The window of that place in the list, from 1; null outside of it.
    QWidget* hWndForIndex(int lIndex) const;

    void Destroy();
    /// Builds the outline of the picture. The key colour is taken from the picture, not from transparent.
    /// False, and no region, without a picture.
    bool Create(const cDIBSection& cDib, Colour transparent = kSkinKey);

    /// Writes the published region structure. A file of that name is replaced once the new one is complete.
    void Save(const QString& sFile) const;
    /// False leaves the region as it was: no file, or not a region.
    bool LoadFromFile(const QString& sFile);
    /// The bytes of a resource of the program, ":/name", or with a library name of a compiled resource file.
    /// A numeric identifier becomes "#" and the number.
    bool LoadFromResource(const QString& id, const QString& libraryFile = {});

    /// Null when there is none; an outline of one colour is there and empty.
    const QRegion* Region() const { return m_hRgn ? &*m_hRgn : nullptr; }

  private:
    bool Replace(const QByteArray& data);

    DebugLog& log_;
    ShapeWindow shape_;
    std::optional<QRegion> m_hRgn;
    std::vector<QPointer<QWidget>> windows_;
};
