#pragma once

#include <QImage>
#include <QPoint>
#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <optional>
#include <vector>

class Form;
class Picture;

/// The one shaped window of the instrument. It carries the face and, below it, the panels, all as children,
/// so that their order is the program's own and no window manager's. Its outline is the union of what shows.
/// Windows that stand by themselves (measurements, spectrum, large time) are not part of it.
///
/// Places of the panels are in the surface's pixels; MoveTo, Left and Top are the face's on the screen.
class Surface : public QWidget {
    Q_OBJECT
  public:
    explicit Surface(QWidget* parent = nullptr);

    /// Takes the face and the panels as children, the face in front, each panel in front of the one before.
    /// The window takes the face's title and follows it.
    void Carry(Form& face, const std::vector<Form*>& panels);
    /// Makes room for the face and for panels that hang at the anchor (in the face's pixels) or, pulled out,
    /// one anchor's width further right. The face keeps its place on the screen.
    void MakeRoom(const QRect& anchor);
    /// The window can be moved by this picture of the face.
    void MoveBy(Picture& picture);

    /// The face's place on the screen, in logical pixels.
    int Left() const;
    int Top() const;
    void MoveTo(int left, int top);

    void Minimise();
    /// Also where the window system minimises a window without telling, as on Wayland: there until the window
    /// is the active one again.
    bool IsMinimised() const { return isMinimized() || away_; }

    /// The face in front of every panel and the window in front of the others.
    void BringFaceToFront();
    /// The panel in front of the other panels, still behind the face.
    void BringPanelUp(QWidget& panel);
    void SendPanelToBack(QWidget& panel);

    /// A part has taken another shape, place or visibility: before the next drawing the window takes the
    /// outline of what shows then. Several changes make one.
    void OutlineChanged();
    /// The outline as of now, in the surface's pixels. On a screen with a scale factor the window's own is
    /// finer.
    QRegion Outline() const;

    /// The face and the panels as they show, in the pixels of the screen, on white.
    QImage Shot();

  signals:
    void CloseRequested(); ///< by the window manager; the window stays until somebody closes it
    void Activated();
    void Minimised(); ///< by Minimise or by the window manager

  protected:
    /// Tab passes by what is covered: by the face, as a closed panel is, or by another panel.
    bool focusNextPrevChild(bool next) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    /// The shape of a part, as it was given and on the present screen.
    struct Shape {
        QPointer<QWidget> part;
        QRegion given; ///< logical pixels
        QRegion fine;  ///< device pixels
        double ratio = 1;
    };
    bool InReach(const QWidget& control) const;
    void DropFocusOutOfReach();
    void TakeOutline();
    void TakeShape(const QObject* part);
    QRegion FitShapes();
    void ConfirmPlace();
    QPoint FacePlace() const;

    QPointer<Form> face_;
    std::vector<QPointer<Form>> panels_;
    std::vector<Shape> shapes_;
    QRegion outline_;
    QRegion fineOutline_; ///< device pixels
    bool outlinePending_ = false;
    bool shaped_ = false;
    bool drawn_ = false;
    bool away_ = false;           ///< minimised, as far as anybody can tell
    std::optional<QPoint> asked_; ///< place of the window, before its first drawing
};
