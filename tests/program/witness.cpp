// Looks at the program from inside, and works it, without the program knowing: a plug-in that the toolkit
// loads into any program that is told to. It follows the steps in CORVANTINE_WITNESS, one a line, and tells
// on standard output what it saw.
//
//   await LABEL TEXT    until the label's text begins so
//   equals LABEL TEXT   until it is that text
//   above LABEL NUMBER  until it is a greater number
//   set KNOB VALUE      turns a knob
//   click BUTTON        presses and lets go the left mouse button on a control
//
// Message boxes are told as "box: ", with a bar for each line's end, and confirmed.

#include <QApplication>
#include <QElapsedTimer>
#include <QGenericPlugin>
#include <QLabel>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kLook = 5;         ///< ms
constexpr int kPatience = 60000; ///< ms for one step

void Tell(const QString& line) {
    std::printf("%s\n", qPrintable(line));
    std::fflush(stdout);
}

template <class T = QWidget> T* Find(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* found = window->findChild<T*>(name)) {
            return found;
        }
    }
    return nullptr;
}

class Witness : public QObject {
  public:
    Witness() : steps_(qEnvironmentVariable("CORVANTINE_WITNESS").split('\n', Qt::SkipEmptyParts)) {
        connect(&timer_, &QTimer::timeout, this, &Witness::Look);
        timer_.start(kLook);
        patience_.start();
    }

  private:
    void Look() {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            if (box != confirmed_ && box->isVisible()) {
                confirmed_ = box;
                Tell("box: " + box->text().replace('\n', '|'));
                box->accept();
            }
            return;
        }
        confirmed_ = nullptr;
        if (steps_.isEmpty()) {
            return;
        }
        if (Done(steps_.front())) {
            Tell("done: " + steps_.takeFirst());
            patience_.restart();
        } else if (patience_.elapsed() > kPatience) {
            const auto* label = Find<QLabel>(steps_.front().section(' ', 1, 1));
            Tell("waits for: " + steps_.front() + ", there is: " + (label ? label->text() : "no such label"));
            std::_Exit(99);
        }
    }

    bool Done(const QString& step) {
        const QString verb = step.section(' ', 0, 0);
        const QString name = step.section(' ', 1, 1);
        const QString rest = step.section(' ', 2);
        if (verb == "click") {
            return Click(Find(name));
        }
        if (verb == "set") {
            QWidget* knob = Find(name);
            return knob != nullptr && knob->isVisible() && knob->setProperty("KnobValue", rest.toInt());
        }
        const auto* label = Find<QLabel>(name);
        if (label == nullptr || !label->isVisible()) {
            return false;
        }
        return (verb == "await" && label->text().startsWith(rest)) ||
               (verb == "equals" && label->text() == rest) ||
               (verb == "above" && label->text().toDouble() > rest.toDouble());
    }

    static bool Click(QWidget* widget) {
        if (widget == nullptr || !widget->isVisible()) {
            return false;
        }
        const QPointF at(widget->width() / 2.0, widget->height() / 2.0);
        const QPointF place = widget->mapToGlobal(at);
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
            QApplication::postEvent(widget,
                                    new QMouseEvent(type, at, place, Qt::LeftButton, held, Qt::NoModifier));
        }
        return true;
    }

    QStringList steps_;
    QTimer timer_;
    QElapsedTimer patience_;
    const QMessageBox* confirmed_ = nullptr;
};

} // namespace

class WitnessPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "witness.json")
  public:
    QObject* create(const QString& name, const QString&) override {
        return name == "witness" ? new Witness : nullptr;
    }
};

#include "witness.moc"
