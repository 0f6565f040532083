#pragma once

#include "controls/design.h"

#include <QString>
#include <QWidget>
#include <functional>
#include <vector>

/// One control on show, built from a row of a form's table.
struct Exhibit {
    FormDesign form; ///< a form with that one row
    QString legend;
    bool focus = false; ///< shown as if Tab had led there
    bool pressed = false;
};

struct GalleryPage {
    QString name;
    std::vector<Exhibit> exhibits;
};

/// Told of every event of every control on show.
using EventTeller = std::function<void(const QString& event)>;

/// A page a control: every design instance of the program's tables, then what the tables do not hold.
std::vector<GalleryPage> GalleryPages();

/// The page with its controls live.
QWidget* BuildPage(const GalleryPage& page, const EventTeller& tell, QWidget* parent);
