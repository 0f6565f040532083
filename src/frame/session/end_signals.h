#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <memory>

/// Turns the system's signals that ask a program to end (SIGTERM, SIGINT, SIGHUP) into one of the event
/// loop, where there is time to save. One object a process.
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
