#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

/// Turns the system's signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into one of the event
/// loop, where there is time to save. A pipe that nobody reads any more (SIGPIPE), as that of the standard
/// error often is when a session ends, is none of these and ends nothing. One object a process.
class EndSignals : public QObject {
    Q_OBJECT
  public:
    EndSignals();
    ~EndSignals() override;
    bool HaveCome() const { return come_; }

  signals:
    void Came();

  private:
    void Read();

    std::unique_ptr<QSocketNotifier> notifier_;
    bool come_ = false;
};
