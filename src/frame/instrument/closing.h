#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

/// The wish to end the program, wherever it comes from, and the moment at which it is served: when no
/// handler stands in the middle of its work, or when a second has passed and one still does.
class Closing : public QObject {
    Q_OBJECT
  public:
    struct Calls {
        std::function<void()> Begin; ///< at the wish: nothing new is to start
        std::function<bool()> Busy;  ///< a handler is at work that is not told by Handler
        std::function<void()> End;   ///< the shutdown itself
    };
    /// Held by who lets events run in the middle of its work.
    class [[nodiscard]] Handler {
      public:
        explicit Handler(Closing& closing) : closing_(closing) { ++closing_.handlers_; }
        ~Handler() { closing_.HandlerReturned(); }
        Handler(const Handler&) = delete;
        Handler& operator=(const Handler&) = delete;

      private:
        Closing& closing_;
    };

    explicit Closing(Calls calls);
    ~Closing() override;

    /// Ends the program now or as soon as the handlers have returned. Asked again, it sends away the box
    /// that holds the end up.
    void Request();
    /// Serves a wish that waits, if nothing is in its way.
    void Serve();

    /// From the request on: a handler that finds it true after it let events run returns at once.
    bool Wanted() const { return wanted_; }
    /// The shutdown has begun.
    bool Served() const { return served_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void HandlerReturned();
    void Wait();
    bool Busy() const;
    void End();

    Calls calls_;
    int handlers_ = 0;
    bool wanted_ = false;
    bool served_ = false;
    int waits_ = 0;
    QTimer waiting_;
};

/// Closes menus, lists and boxes that wait for an answer, as if it was none.
void DismissBoxes();
