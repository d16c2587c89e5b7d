// Assigns keys to properties while the record of their class is built.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

namespace qn {

class ModelMapper {
public:
    /// The properties by name; those that have got their keys are removed from the dictionary.
    explicit ModelMapper(Ref<NSMutableDictionary> metas) : metas_(std::move(metas)) {}

    /// By the hook's dictionary: per property a key, a path of keys with dots between them, or an array of
    /// either. A property without a usable key is not mapped.
    void mapCustom(const Ref<NSDictionary> &keys);
    /// What is left of the properties that were declared with keys, in the same way.
    void mapDeclared();
    /// Everything else under its own name.
    void mapRest();

    /// The first property of the chain of each key; none when there are no keys.
    Ref<NSDictionary> mapper() const;
    Ref<NSArray> keyPathMetas() const { return as<NSArray>(keyPathMetas_->copy()); }
    Ref<NSArray> multiKeysMetas() const { return as<NSArray>(multiKeysMetas_->copy()); }

private:
    using Meta = Ref<_QNModelPropertyMeta>;

    void mapToKey(const Meta &meta, const Ref<NSString> &key);
    void mapToKeys(const Meta &meta, const Ref<NSArray> &keys);
    /// Makes the property the head of the key's chain.
    void push(const Meta &meta, const id &key);

    const Ref<NSMutableDictionary> metas_;
    const Ref<NSMutableDictionary> mapper_ = NSMutableDictionary::dictionary();
    const Ref<NSMutableArray> keyPathMetas_ = NSMutableArray::array();
    const Ref<NSMutableArray> multiKeysMetas_ = NSMutableArray::array();
};

} // namespace qn
