// How a model class is mapped: its properties, and the keys they are found under.
//
//     const auto meta = _QNModelMeta::metaWithClass(Book::class_());
//     peek<_QNModelPropertyMeta>(meta->_mapper->objectForKey(u"credits.author"_ns))->_name;   // "author"
//
// A record is immutable once it is built. The one in the cache is replaced when the class has been marked
// with `setNeedUpdate`, as after accessors were added at run time, and when a class is made at run time whose
// name the old one did not know; who still has the old one may go on with it.
//
// Threads: any. One lock guards the cache; building runs outside it, so of two threads that ask first at once
// each may get a record of its own, and later callers the one stored last. A record that was begun before the
// latest mark is never taken for a fresh one, in whatever order they are stored.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelKeyIndex.h"

class _QNModelMeta : public NSObject {
    NS_CLASS(_QNModelMeta, NSObject)
public:
    /// The record kept in the cache. None for null.
    static Ref<_QNModelMeta> metaWithClass(Class cls);
    /// A new record that is not kept. None for null.
    static Ref<_QNModelMeta> initWithClass(Class cls);

    /// Whether the class may be read differently now: it has been marked, or a class has become known while
    /// the record had met names of none.
    bool isStale() const;
    /// The head of the chain in the mapper; null for a key that reaches no property.
    const _QNModelPropertyMeta *headForKey(const id &key) const;

    Ref<QNClassInfo> _classInfo;
    /// By key (NSString, or the NSArray of several), the first _QNModelPropertyMeta of a chain; none when
    /// empty.
    Ref<NSDictionary> _mapper;
    /// _QNModelPropertyMeta, those of the class before those of its superclasses; none when there are none.
    Ref<NSArray> _allPropertyMetas;
    Ref<NSArray> _keyPathPropertyMetas;
    Ref<NSArray> _multiKeysPropertyMetas;
    NSUInteger _keyMappedCount = 0; ///< of all properties
    qn::FoundationKind _nsType = qn::FoundationKind::None;
    // Whether the class has the hooks.
    bool _hasCustomWillTransformFromDictionary = false;
    bool _hasCustomTransformFromDictionary = false;
    bool _hasCustomTransformToDictionary = false;
    bool _hasCustomClassFromDictionary = false;

    /// Those of them that key-value coding reads: they make hash and equality.
    std::vector<const _QNModelPropertyMeta *> _comparedPropertyMetas;
    /// Whether a value of those may be, or hold, a model.
    bool _leadsToModels = false;
    /// The keys of the mapper that are texts.
    qn::ModelKeyIndex _keys{nullptr};
    /// Whether filling an instance runs code of the class's own, hooks or accessors.
    bool _runsOwnCode = false;
    /// Whether it runs none, and takes one key a property: then nobody can tell in which order, or whether
    /// twice.
    bool _isPlain = false;
    /// The classes of models that filling an instance may make.
    std::vector<Class> _modelClasses;

    /// Whether an instance is written as it is read: one key a property, and no hook that changes the whole.
    bool _isWrittenPlainly = false;
    /// Then the text of each key, in quotes and with the colon, and the property that is written there.
    std::vector<std::pair<std::string, const _QNModelPropertyMeta *>> _writtenKeys;

private:
    void findHooks();
    void findComparedProperties();
    void findWrittenKeys();
    bool runsOwnCode() const;
    void findModelClasses();

    std::uint64_t _marksSeen = 0;  // of those on the record of the class, when this one was begun
    std::uint64_t _namesKnown = 0; // to the registry of classes, if a name met was of none; otherwise 0
};
