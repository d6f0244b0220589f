#pragma once

#include <QPoint>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

class QComboBox;
class QTableWidget;
class QTimer;

// Works the program's windows as a user does: by mouse and keys, on widgets found by their names.

namespace nrv::driver {

/// The visible or hidden widget of a name below a window, or among all windows when none is given; null when there is
/// none.
QWidget* Find(const QString& name, QWidget* below = nullptr);

template <class Widget>
Widget* FindAs(const QString& name, QWidget* below = nullptr) {
    return qobject_cast<Widget*>(Find(name, below));
}

/// Lets events run until it holds or the time is over; gives what it is then.
bool WaitUntil(const std::function<bool()>& holds, int milliseconds = 5000);

void Click(QWidget* widget);
/// A click on a check box or an option, which take it on their mark alone.
void ClickMark(QWidget* widget);
void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
/// Moves a list to an entry with the arrow keys.
void Choose(QComboBox* list, int entry);
void DoubleClickRow(QWidget* table, int row);
void ShowTab(QWidget* tabs, int tab);

/// Does something once with the window of a name as soon as it shows: for a modal dialog, which blocks the one that
/// opens it.
class WhenShown {
  public:
    WhenShown(const QString& name, std::function<void(QWidget&)> action);
    ~WhenShown();
    WhenShown(const WhenShown&) = delete;
    WhenShown& operator=(const WhenShown&) = delete;
    bool Done() const { return done_; }

  private:
    QTimer* timer_;
    bool done_ = false;
};

/// Drags a widget by its middle: button down, moves through points of its parent, button up.
void Drag(QWidget* widget, const std::vector<QPoint>& parent_points, const std::function<void()>& before_release = {});

/// What a message box said when it was answered.
struct SeenBox {
    QString Title;
    QString Text;
};

/// Answers message boxes as they come up, each with the button of the next text in line ("Yes", "No", "OK"), and leaves
/// them alone when there is none.
class BoxAnswers {
  public:
    explicit BoxAnswers(std::vector<QString> buttons = {});
    ~BoxAnswers();
    BoxAnswers(const BoxAnswers&) = delete;
    BoxAnswers& operator=(const BoxAnswers&) = delete;

    void Next(const QString& button) { buttons_.push_back(button); }
    /// Called with each box before it is answered.
    std::function<void(QWidget&)> OnBox;
    const std::vector<SeenBox>& Seen() const { return seen_; }

  private:
    void Look();

    QTimer* timer_;
    std::vector<QString> buttons_;
    std::size_t answered_ = 0;
    std::vector<SeenBox> seen_;
};

} // namespace nrv::driver
