// Whose settings the window shows, and where the level among them comes from.
//
// The printer that is asked and written to is the one that is bound, and that may be the printer of an
// earlier selection (see RecordLookup.h). So that nobody takes it for the selected one, this keeps the two
// apart.
//
// | level   | from                                                                             |
// |---------|----------------------------------------------------------------------------------|
// | notRead | start; the bound printer did not say its level, or another one said its own      |
// | reading | `beginReading`                                                                   |
// | read    | `levelWasRead` from the bound printer                                            |
// | chosen  | `levelWasChosen`                                                                 |
// | set     | `levelWasWritten` to the bound printer                                           |
// | refused | the same, when the printer refused                                               |
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

    /// A queue over USB was selected; `bound` is the printer that its settings are those of, or none.
    void select(const Ref<NSString> &deviceUri, const std::optional<Printer> &bound, bool isAttached,
                bool isReady);

    /// The bound printer is being asked. The number stands for this reading until the next one begins.
    int beginReading();
    /// A printer said its level, which is shown from now on.
    void levelWasRead(const Printer &from);
    /// It answered, but not with a level.
    void levelWasNotRead(const Printer &from);
    /// Nothing more comes of that reading.
    void endReading(int number);
    /// Somebody chose another level.
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
