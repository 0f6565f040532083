#include "frame/session_end.h"

#include "frame/instrument.h"

#include <QGuiApplication>
#include <QSessionManager>

void SaveWithTheSession(Instrument& instrument) {
    const auto save = [&instrument](QSessionManager& session) {
        const QStringList failures = instrument.KeepSettings();
        if (!failures.isEmpty() && session.allowsErrorInteraction()) {
            instrument.TellUnsaved(failures);
            session.release();
        }
    };
    // Answered inside the request: when it returns, the session takes it that all is saved.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &instrument.closing, save,
                     Qt::DirectConnection);
    QObject::connect(qGuiApp, &QGuiApplication::saveStateRequest, &instrument.closing, save,
                     Qt::DirectConnection);
}
