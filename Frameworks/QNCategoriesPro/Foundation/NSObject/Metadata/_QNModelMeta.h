// How a model class is mapped: its properties, and the keys they are found under.
//
//     const auto meta = _QNModelMeta::metaWithClass(Book::class_());
//     peek<_QNModelPropertyMeta>(meta->_mapper->objectForKey(u"credits.author"_ns))->_name;   // "author"
//
// A record is immutable once it is built. The one in the cache is replaced after the class was marked with
// `setNeedUpdate`, as when accessors were added at run time, and after a class was made at run time whose
// name the record met but did not know. Old records stay usable.
//
// Threads: any. One lock guards the cache; building runs outside it. So two threads that ask for a new class
// at the same time may get a record each; later callers get the one stored last. A record that was begun
// before the latest mark never counts as fresh, in whatever order records are stored.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelKeyIndex.h"

class _QNModelMeta : public NSObject {
    NS_CLASS(_QNModelMeta, NSObject)
public:
    /// The record in the cache, built first if need be. None for null.
    static Ref<_QNModelMeta> metaWithClass(Class cls);
    /// A new record that is not kept. None for null.
    static Ref<_QNModelMeta> initWithClass(Class cls);

    /// Whether building it again might give something else: the class was marked, methods of any class were
    /// exchanged, or the record met an unknown class name and classes have been added since.
    bool isStale() const;
    /// The head of the chain in the mapper; null for a key that reaches no property.
    const _QNModelPropertyMeta *headForKey(const id &key) const;

    Ref<QNClassInfo> _classInfo;
    /// The first _QNModelPropertyMeta of the chain of each key (an NSString, or an NSArray of several); none
    /// when there are no keys.
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

    /// Those of them that key-value coding can read, by which models are hashed and compared.
    std::vector<const _QNModelPropertyMeta *> _comparedPropertyMetas;
    /// Whether a value of those may be, or hold, a model.
    bool _leadsToModels = false;
    /// The keys of the mapper that are texts.
    qn::ModelKeyIndex _keys{nullptr};
    /// Whether filling an instance runs code of the class's own, hooks or accessors.
    bool _runsOwnCode = false;
    /// Whether it runs none and every property has one key: then no code can observe in which order
    /// properties are set, or whether one is set twice.
    bool _isPlain = false;
    /// The classes of models that filling an instance may make.
    std::vector<Class> _modelClasses;

    /// Whether every property has one key and no hook changes the dictionary that is written.
    bool _isWrittenPlainly = false;
    /// If so, the text of each key, in quotes and with the colon, and the property that is written there. A
    /// thousand models are written in 0.7 times the time of escaping their keys each time.
    std::vector<std::pair<std::string, const _QNModelPropertyMeta *>> _writtenKeys;

private:
    void findHooks();
    void findComparedProperties();
    void findWrittenKeys();
    bool runsOwnCode() const;
    void findModelClasses();

    std::uint64_t _methodChanges = 0; // of all classes, when this one was begun
    std::uint64_t _marksSeen = 0;     // marks on the record of the class when this one was begun
    std::uint64_t _namesKnown = 0;    // the registry's count, if the record met an unknown name; otherwise 0
};
