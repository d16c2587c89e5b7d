// All classes by name. NS_IMPLEMENTATION announces its class while the program, or a library, is loaded; the
// class itself is made when it is first used or looked up by name.
//
// Announcements run before all other static initialisers, so these may look up any class of the program. A
// class of a static library is part of the program only if something refers to its object file.
//
// Threads: every member is safe from every thread.
#pragma once

#include "Platform/Locking/Mutex.h"
#include "Platform/Runtime/Object/Ref.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#pragma GCC visibility push(default)

namespace runtime {

/// A static object that NS_IMPLEMENTATION defines.
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
    const Find find_; ///< makes the class on the first call
    ClassAnnouncement *next_ = nullptr;
};

class ClassRegistry {
public:
    static ClassRegistry &shared();

    /// The class of that name, which is made if it has only been announced; null without one. Raises
    /// NSInvalidArgumentException when two classes are announced by the name, and whatever making it raises.
    Class find(std::string_view name);

    /// Reserves the name for a class that is about to be declared: the announced one, or one made at run time
    /// when `announcement` is null. False when the name belongs to another class.
    bool claim(const std::string &name, const ClassAnnouncement *announcement);
    /// Makes the class with the reserved name available to `find`, and keeps it and its meta-class for good.
    void enter(Ref<objc_class> cls, Ref<objc_class> metaClass);
    /// Frees the name reserved for a class made at run time, whose declaration failed.
    void abandon(const std::string &name);

    /// The number of names that ever became known. While it is unchanged, a name not found before is still
    /// unknown.
    std::uint64_t namesKnown();

private:
    struct Entry {
        const ClassAnnouncement *announcement = nullptr; ///< null for a class made at run time
        bool isContested = false;                        ///< announced twice before it was made
        Class cls = nullptr;                             ///< once it is made
    };

    void hearAnnouncements() ZK_REQUIRES(lock_);

    locking::Mutex lock_;
    std::map<std::string, Entry, std::less<>> entries_ ZK_GUARDED_BY(lock_);
    std::vector<Ref<objc_class>> kept_ ZK_GUARDED_BY(lock_);
    std::uint64_t namesKnown_ ZK_GUARDED_BY(lock_) = 0;
};

} // namespace runtime

#pragma GCC visibility pop
