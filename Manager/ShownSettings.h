// Which printer's settings the window shows, and where the level comes from.
//
// The printer that is read and written is the bound one, which may be the printer of an earlier selection
// (see SelectedPrinterLookup.h). This keeps it apart from the selected one, so that the window can say which
// it shows.
//
// | level   | from                                                                             |
// |---------|----------------------------------------------------------------------------------|
// | notRead | start; another printer was bound; the bound one gave no level, or another one did |
// | reading | `beginReading`                                                                   |
// | read    | `levelWasRead` from the bound printer                                            |
// | chosen  | `levelWasChosen`                                                                 |
// | set     | `levelWasWritten` to the bound printer                                           |
// | refused | the same, when the printer refused the level                                     |
//
// Threads: the main thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"
#include "Platform/Transport/PrinterUri.h"

#include <optional>

class NSString;

class ShownSettings {
public:
    using Printer = transport::PrinterIdentity;

    enum class Level { notRead, reading, read, chosen, set, refused };

    /// Why the settings that are shown are not those that the selected printer has now.
    enum class Obstacle { none, notAttached, notReady, notFound };

    /// A queue over USB was selected; `bound` is the printer whose settings are shown from now on, or none.
    /// `isAttached` and `isReady` are of the selected printer.
    void select(const Ref<NSString> &deviceUri, const std::optional<Printer> &bound, bool isAttached,
                bool isReady);

    /// The bound printer is being asked. Returns a number for this reading, for `endReading`.
    int beginReading();
    /// A printer answered with its level, which the window shows from now on.
    void levelWasRead(const Printer &from);
    /// A printer answered, but not with a level.
    void levelWasNotRead(const Printer &from);
    /// No more answers come from that reading. Nothing when a later one has begun.
    void endReading(int number);
    /// The user chose another level.
    void levelWasChosen();
    /// A printer took the level that is shown, or refused it.
    void levelWasWritten(const Printer &to, bool taken);

    /// The printer whose settings are shown, or none.
    const std::optional<Printer> &owner() const { return owner_; }
    Obstacle obstacle() const { return obstacle_; }
    /// Whether the owner is the selected printer.
    bool isSelected() const { return isSelected_; }
    Level level() const { return level_; }

private:
    std::optional<Printer> owner_;
    bool isSelected_ = false;
    Obstacle obstacle_ = Obstacle::none;
    Level level_ = Level::notRead;
    int readings_ = 0;
};
