#pragma once

#include "controls/picture.h"

#include <QImage>
#include <QString>

/// The same skin painted at a higher resolution, for screens with a scale factor: fine/<name>.jpg in the
/// folder of <name>.bmp. It belongs to one bitmap and names it by the SHA-1 of its file, so that a skin that
/// its user has painted over is never shown as it was before.
QString FineSkinFile(const QString& skinFile);

/// The fine picture of a bitmap file; null when there is none, when it is damaged or another bitmap's, or
/// when its sides are not those of the bitmap times one factor.
QImage LoadFineSkin(const QString& skinFile);

/// Draws the fine picture, read when it is first asked for; the bitmap itself where there is none.
FaceDrawing FineSkinDrawing(const QString& skinFile, const QPixmap& bitmap);
