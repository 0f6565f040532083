#include "about/about_tab.h"

#include "about/device_details.h"
#include "about/update_link.h"
#include "controls/form.h"
#include "controls/host_hyperlink.h"
#include "controls/hyperlink_label.h"
#include "frame/record/record.h"

#include <QDir>
#include <QKeyEvent>
#include <QListWidget>
#include <QScopedValueRollback>
#include <utility>

namespace {

bool OpensLine(const QKeyEvent& event) {
    const int key = event.key();
    return (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) &&
           (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

} // namespace

AboutTab::Controls AboutTab::Controls::Of(const Form& tab) {
    return {.CorvantineList = tab.control<QListWidget>("CorvantineList"),
            .WebLink = tab.control<UserControl2>("WebLink")};
}

AboutTab::AboutTab(const Record& record, Driver& driver, const Controls& controls, QString folder,
                   Calls calls)
    : record_(record), driver_(driver), controls_(controls), folder_(std::move(folder)),
      calls_(std::move(calls)) {}

void AboutTab::Connect() {
    connect(controls_.CorvantineList, &QListWidget::itemClicked, this, &AboutTab::CorvantineList_Click);
    controls_.CorvantineList->installEventFilter(this);
    connect(controls_.WebLink, &UserControl2::Click, this, &AboutTab::WebLink_Click);
}

bool AboutTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (OpensLine(key)) {
            // The key that closes the box is still held when the list has the focus again.
            if (!key.isAutoRepeat()) {
                CorvantineList_Click();
            }
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void AboutTab::CorvantineList_Click() {
    // The position in the list counts as the channel, although the list holds the modules in use only.
    const int n = controls_.CorvantineList->currentRow() + 1;
    if (n < 1 || n > kScopeChannels || showing_) {
        return;
    }
    const QScopedValueRollback<bool> once(showing_, true);
    calls_.Show(about::DeviceDetails(n, record_, driver_.PortOpen(n)));
}

void AboutTab::WebLink_Click() {
    const QString link = about::UpdateLink(QDir(folder_).filePath(QStringLiteral("update.url")));
    if (!link.isEmpty()) {
        controls_.WebLink->HyperLink()->NavigateTo(link);
    }
}
