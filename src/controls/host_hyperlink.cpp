#include "controls/host_hyperlink.h"

#include <QDesktopServices>
#include <QUrl>

namespace {

bool OpenOnDesktop(const QString& target) {
    const QUrl url(target.trimmed(), QUrl::TolerantMode);
    return url.isValid() && !url.isRelative() && QDesktopServices::openUrl(url);
}

} // namespace

HostHyperLink::HostHyperLink(QObject* parent) : QObject(parent), opener_(OpenOnDesktop) {}

bool HostHyperLink::NavigateTo(const QString& target, const QString& location, const QString&) {
    if (location.isEmpty()) {
        return opener_(target);
    }
    return opener_(target.trimmed() + QLatin1Char('#') + location);
}

void HostHyperLink::SetOpener(Opener opener) {
    opener_ = opener ? std::move(opener) : OpenOnDesktop;
}
