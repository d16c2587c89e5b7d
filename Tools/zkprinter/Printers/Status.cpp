#include "Tools/zkprinter/Printers/Status.h"

#include "Platform/Foundation/Text/ControlCharacters.h"
#include "Tools/zkprinter/Printers/Patience.h"

StatusAnswer askStatus(const Ref<ZKUSB> &printer, const std::string &name) {
    StatusAnswer asked;
    const Waiting waiting("\"" + escapedControlCharacters(name) + "\"");
    asked.answer = readPrinterStatus(printer->URI());
    asked.transportStatus = asked.answer.transportStatus;
    findAccess(asked, *printer);
    return asked;
}

PrinterStatus statusIn(const StatusAnswer &answer, const std::string &name) {
    switch (answer.answer.outcome) {
    case PrinterStatus::Outcome::noAnswer:
        throw reasonOf(answer.transportStatus, name, answer.access);
    case PrinterStatus::Outcome::unreadable:
        throw Failure(ExitStatus::refused, "\"" + escapedControlCharacters(name) +
                                               "\" answered with something that is no status; switch it off "
                                               "and on and try again.");
    case PrinterStatus::Outcome::normal:
    case PrinterStatus::Outcome::notNormal:
        break;
    }
    return answer.answer;
}
