#include "Manager/ShownSettings.h"

#include "Manager/QueueConnection.h"
#include "Platform/Foundation/Text/NSString.h"

void ShownSettings::select(const Ref<NSString> &deviceUri, const std::optional<Printer> &bound,
                           bool isAttached, bool isReady) {
    isSelected_ = bound && namesPrinter(deviceUri, *bound);
    if (bound != owner_ || (isSelected_ && !isReady))
        level_ = Level::notRead;
    owner_ = bound;
    if (isSelected_ && isReady)
        obstacle_ = Obstacle::none;
    else if (!isAttached)
        obstacle_ = Obstacle::notAttached;
    else
        obstacle_ = isReady ? Obstacle::notFound : Obstacle::notReady;
}

int ShownSettings::beginReading() {
    level_ = owner_ ? Level::reading : Level::notRead;
    return ++readings_;
}

void ShownSettings::levelWasRead(const Printer &from) {
    level_ = owner_ == from ? Level::read : Level::notRead;
}

void ShownSettings::levelWasNotRead(const Printer &from) {
    if (owner_ == from)
        level_ = Level::notRead;
}

void ShownSettings::endReading(int number) {
    if (number == readings_ && level_ == Level::reading)
        level_ = Level::notRead;
}

void ShownSettings::levelWasChosen() {
    level_ = Level::chosen;
}

void ShownSettings::levelWasWritten(const Printer &to, bool taken) {
    if (owner_ == to)
        level_ = taken ? Level::set : Level::refused;
}
