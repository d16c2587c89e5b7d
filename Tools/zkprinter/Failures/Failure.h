// What can go wrong, each with an exit status of its own for scripts.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

/// The exit statuses of the program.
enum class ExitStatus {
    success = 0,            ///< done
    notNormal = 1,          ///< the printer answered that it is not in a normal state (`status` only)
    usage = 2,              ///< the command line makes no sense
    noSuchQueue = 3,        ///< there is no queue of that name, or its model is not supported
    notUsb = 4,             ///< the queue does not print over USB
    notAttached = 5,        ///< the queue's printer is not attached, or switched off
    noAnswer = 6,           ///< the printer is attached but did not answer in time
    refused = 7,            ///< the printer answered, but not what was asked of it
    cupsUnreachable = 8,    ///< the print service does not answer
    brokenInstallation = 9, ///< a file of this program is missing
    noPermission = 10,      ///< this user may not open the printer
    busy = 11,              ///< a print job or another program holds the printer
    unplugged = 12,         ///< the printer was unplugged or switched off meanwhile
    transferFailed = 13,    ///< the transfer failed on the cable or in the printer
    ambiguous = 14,         ///< two attached printers are called what was asked for; neither was touched
    timedOut = 15,          ///< the command took longer than `--timeout` allows
    unwritable = 16,        ///< standard output does not take the result: a full disk, or nobody reads it
    outOfResources = 17,    ///< this computer has no memory or no thread left for the command
    partly = 18,            ///< some printers could not be asked or set; the others were
};

/// The status's name in JSON, e.g. "not-attached".
const char *nameOf(ExitStatus status);

/// The queue that a command was asked to work on.
struct Subject {
    std::string queue;                    ///< as the user names it
    std::optional<std::string> deviceUri; ///< none when unknown
};

/// Thrown to end the command. Its text is one sentence that also says what to do next.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string &sentence) : std::runtime_error(sentence), status_(status) {}

    ExitStatus status() const { return status_; }

    /// The queue it happened to; none when the command is not about one queue.
    const std::optional<Subject> &subject() const { return subject_; }
    /// The same failure, of that queue.
    Failure about(Subject subject) const {
        Failure failure = *this;
        failure.subject_ = std::move(subject);
        return failure;
    }

private:
    ExitStatus status_;
    std::optional<Subject> subject_;
};

/// A failure that the printed result includes already: only its sentence is still to be written, on standard
/// error.
class ToldFailure : public Failure {
public:
    explicit ToldFailure(const Failure &failure) : Failure(failure) {}
};
