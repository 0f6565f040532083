#pragma once

#include <QDir>
#include <QImage>
#include <QJsonObject>
#include <QRect>
#include <QString>
#include <initializer_list>

class Form;
class QWidget;

/// Lets the program run.
void Wait(int milliseconds);

/// Takes pictures for the guide, and notes beside each where in it which control stands.
class Camera {
  public:
    /// A form in the picture, and what the names of its controls begin with there.
    struct Subject {
        const Form* form;
        QString prefix = {};
    };

    explicit Camera(QDir folder) : folder_(std::move(folder)) {}

    /// That part of a window, of which the image is the whole.
    void Take(const QString& name, const QWidget& window, const QImage& whole, const QRect& area,
              std::initializer_list<Subject> subjects);
    /// The whole window.
    void Take(const QString& name, QWidget& window, std::initializer_list<Subject> subjects);

    /// Every picture's controls: left, top, width and height as parts of the picture's, and whether someone
    /// who sees the control would ask what it does.
    const QJsonObject& Pictures() const { return pictures_; }
    int Failures() const { return failures_; }

  private:
    QDir folder_;
    QJsonObject pictures_;
    int failures_ = 0;
};
