#pragma once

#include <QPixmap>

/// A face for a program that has no skin to put on: one grey, with the rounded corners that a skin's outline
/// has, so that the window has a shape and every control a colour under its centre.
QPixmap PlainFace(QSize size);
