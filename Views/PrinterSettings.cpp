#include "Views/PrinterSettings.h"

#include "Manager/PrinterSettingsProgram.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

std::vector<std::string> command() {
    return printerSettingsCommand(
        qgetenv("XDG_CURRENT_DESKTOP").toStdString(), [](const std::string &program) {
            return !QStandardPaths::findExecutable(QString::fromStdString(program)).isEmpty();
        });
}

} // namespace

bool PrinterSettings::exist() {
    return !command().empty();
}

void PrinterSettings::open() {
    QStringList words;
    for (const std::string &word : command())
        words += QString::fromStdString(word);
    if (!words.isEmpty())
        QProcess::startDetached(words.takeFirst(), words);
}
