#pragma once

#include <QAccessible>
#include <QString>

#include <functional>
#include <optional>

namespace nrv::ui {

/// What a widget that the toolkit does not know tells a screen reader, and takes from it.
class Spoken {
  public:
    /// Numbers that grow as the value does.
    struct Scale {
        int Minimum;
        int Maximum;
        int Now;
    };

    explicit Spoken(QAccessible::Role role) : Role(role) {}
    virtual ~Spoken() = default;

    const QAccessible::Role Role;
    /// The value as a person would say it.
    std::function<QString()> InWords;

    /// What can be set by a reader; nothing where no number can.
    virtual std::optional<Scale> SpokenScale() const { return std::nullopt; }
    /// Sets a number of the scale as the user would: its event runs.
    virtual void TakeSpoken(int /*number*/) {}
    /// What pressing it does, "" for nothing.
    virtual QString SpokenAction() const { return {}; }
    virtual void DoSpokenAction() {}
};

/// From now on the widgets of ours answer a screen reader. Once in a process; later calls do nothing.
void InstallSpoken();

} // namespace nrv::ui
