// Which classes there are, by name. NS_IMPLEMENTATION announces its class while the program, or a library, is
// loaded; the class itself is made by whoever first uses it or asks for its name.
//
// Announcements precede all other static initialisers, which may ask for any class of the program. What no
// program refers to is not in it, though: of a static library only those object files are linked, with their
// classes, that something else refers to.
//
// Threads: any.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace runtime {

/// Lasts as long as the program; see NS_IMPLEMENTATION.
class ClassAnnouncement {
public:
    using Find = Class (*)();

    ClassAnnouncement(const char *name, Find find);
    ClassAnnouncement(const ClassAnnouncement &) = delete;
    ClassAnnouncement &operator=(const ClassAnnouncement &) = delete;

    const char *name() const { return name_; }

private:
    friend class ClassRegistry;

    const char *const name_;
    const Find find_; ///< makes the class, or finds it made
    ClassAnnouncement *next_ = nullptr;
};

class ClassRegistry {
public:
    static ClassRegistry &shared();

    /// The class of that name, made when it has only been announced; null when there is none. Raises
    /// NSInvalidArgumentException when two classes are announced by the name.
    Class find(std::string_view name);

    /// Takes the name for a class that is about to be declared: the one of the announcement, or without one a
    /// class made at run time. False when the name is another's.
    bool claim(const std::string &name, const ClassAnnouncement *announcement);
    /// Lets others find the class that took the name, and keeps it and its meta-class for good.
    void enter(Ref<objc_class> cls, Ref<objc_class> metaClass);
    /// Gives the name of a class made at run time back: it could not be declared.
    void abandon(const std::string &name);

    /// Grows whenever a name becomes known: a name not found before may be found once it has grown.
    std::uint64_t namesKnown();

private:
    struct Entry {
        const ClassAnnouncement *announcement = nullptr; ///< none for a class made at run time
        bool isContested = false;                        ///< announced twice before it was made
        Class cls = nullptr;                             ///< once it is made
    };

    void hearAnnouncements();

    std::mutex lock_; // guards all of it
    std::map<std::string, Entry, std::less<>> entries_;
    std::vector<Ref<objc_class>> kept_;
    std::uint64_t namesKnown_ = 0;
};

} // namespace runtime
