#include "frame/session/session_end.h"

#include "frame/instrument/instrument.h"
#include "frame/instrument/shut_down.h"

#include <QEvent>
#include <QGuiApplication>
#include <QSessionManager>

namespace {

/// The session, or the desktop, tells the program to quit. Left to the toolkit that is lost while the program
/// still starts.
class QuitIsAClose : public QObject {
  public:
    explicit QuitIsAClose(Instrument& instrument) : QObject(&instrument.closing), instrument_(instrument) {
        qGuiApp->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != qGuiApp || event->type() != QEvent::Quit || instrument_.closing.Served()) {
            return false;
        }
        ShutDown(instrument_);
        return true;
    }

  private:
    Instrument& instrument_;
};

} // namespace

void SaveWithTheSession(Instrument& instrument) {
    const auto save = [&instrument](QSessionManager& session) {
        const QStringList failures = instrument.KeepSettings();
        if (!failures.isEmpty() && session.allowsErrorInteraction()) {
            instrument.TellUnsaved(failures);
            session.release();
        }
    };
    new QuitIsAClose(instrument); // which owns it
    // Answered inside the request: when it returns, the session takes it that all is saved.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &instrument.closing, save,
                     Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::saveStateRequest, &instrument.closing, save,
                     Qt::DirectConnection);
}
