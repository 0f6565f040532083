#pragma once

#include <QObject>
#include <QString>
#include <functional>

/// The system's way to a link: opens it with the viewer that the desktop has set for it.
class HostHyperLink : public QObject {
    Q_OBJECT
  public:
    /// Takes the target as it was given; says whether something was opened.
    using Opener = std::function<bool(const QString& target)>;

    explicit HostHyperLink(QObject* parent = nullptr);

    /// Goes to a target, which may have blanks and line ends around it. `location` (a place within the
    /// target) and `frame` have no meaning to the desktop and are for owners that name none.
    Q_INVOKABLE bool NavigateTo(const QString& target, const QString& location = {},
                                const QString& frame = {});

    /// Puts another opener in the place of the desktop's.
    void SetOpener(Opener opener);

  private:
    Opener opener_;
};
