// Records of classes: what a class itself declares, decoded once and kept for the life of the process.
//
//     const auto info = QNClassInfo::classInfoWithClass(Book::class_());
//     const auto title = as<QNClassPropertyInfo>(info->propertyInfos()->objectForKey(u"title"_ns));
//     title->setter();    // setTitle:
//
// Code that adds to a class at run time marks its record with `setNeedUpdate`; the next lookup through the
// cache rebuilds it, and it stays the same object.
//
// Threads: any. One lock guards the cache; rebuilding runs under it, building a new record does not. So two
// threads that ask for a new class at the same time may get a record each; later callers get the one stored
// last, and the other is marked for good, since later marks do not reach it.
// A reader of a record that is being rebuilt sees each dictionary either before or after, never half-built.
#pragma once

#include "Frameworks/QNCategoriesPro/QNClassMemberInfo.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Locking/Mutex.h"

#include <atomic>

#pragma GCC visibility push(default)

class QNClassInfo : public NSObject {
    NS_CLASS(QNClassInfo, NSObject)
public:
    /// The record in the cache, made or rebuilt first if need be. None for null.
    static Ref<QNClassInfo> classInfoWithClass(Class cls);
    template <class T>
    static Ref<QNClassInfo> classInfoWithClass() {
        return classInfoWithClass(T::class_());
    }
    /// None for an unknown name.
    static Ref<QNClassInfo> classInfoWithClassName(const Ref<NSString> &name);
    /// A new record that is not kept; those of the superclasses are. None for null.
    static Ref<QNClassInfo> initWithClass(Class cls);
    /// For `initWithClass`, which also completes the record.
    explicit QNClassInfo(Class cls);

    /// Reads the members of the class again.
    void _update();
    void setNeedUpdate() { ++_marks; }
    bool needUpdate() const { return _marks != _marksSeen; }
    /// How often the record was marked, and how many of those marks its contents already reflect.
    std::uint64_t marks() const { return _marks; }
    std::uint64_t marksSeen() const { return _marksSeen; }

    Class cls() const { return _cls; }
    /// Null for a root class.
    Class superCls() const { return _superCls; }
    /// Null for a meta-class.
    Class metaCls() const { return _metaCls; }
    bool isMeta() const { return _isMeta; }
    Ref<NSString> name() const { return _name; }
    /// None for a root class.
    Ref<QNClassInfo> superClassInfo() const { return _superClassInfo; }
    /// By name, what the class itself declares: QNClassIvarInfo, QNClassMethodInfo and QNClassPropertyInfo.
    /// Never none.
    Ref<NSDictionary> ivarInfos() const { return read(&QNClassInfo::_ivarInfos); }
    Ref<NSDictionary> methodInfos() const { return read(&QNClassInfo::_methodInfos); }
    Ref<NSDictionary> propertyInfos() const { return read(&QNClassInfo::_propertyInfos); }

private:
    Ref<NSDictionary> read(Ref<NSDictionary> QNClassInfo::*infos) const {
        const locking::MutexLock guard(_reading);
        return this->*infos;
    }

    const Class _cls;
    const Class _superCls;
    const bool _isMeta;
    Class _metaCls = nullptr;
    const Ref<NSString> _name;
    Ref<QNClassInfo> _superClassInfo;
    // Counted, so that a mark set during an update outlives it.
    std::atomic<std::uint64_t> _marks = 0;
    std::atomic<std::uint64_t> _marksSeen = 0;
    mutable locking::Mutex _reading;
    Ref<NSDictionary> _ivarInfos ZK_GUARDED_BY(_reading);
    Ref<NSDictionary> _methodInfos ZK_GUARDED_BY(_reading);
    Ref<NSDictionary> _propertyInfos ZK_GUARDED_BY(_reading);
};

#pragma GCC visibility pop
