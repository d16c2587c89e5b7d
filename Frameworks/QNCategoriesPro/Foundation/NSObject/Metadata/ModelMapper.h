// Gives properties the keys they are found under, while the record of their class is built.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

namespace qn {

class ModelMapper {
public:
    /// The properties by name; those that have been mapped leave the dictionary.
    explicit ModelMapper(Ref<NSMutableDictionary> metas) : metas_(std::move(metas)) {}

    /// As the hook tells: by property a key, a path of keys with dots between them, or an array of those. A
    /// property with no usable key is found under none.
    void mapCustom(const Ref<NSDictionary> &keys);
    /// Everything else under its own name.
    void mapRest();

    /// By key the first property of a chain; none when empty.
    Ref<NSDictionary> mapper() const;
    Ref<NSArray> keyPathMetas() const { return as<NSArray>(keyPathMetas_->copy()); }
    Ref<NSArray> multiKeysMetas() const { return as<NSArray>(multiKeysMetas_->copy()); }

private:
    using Meta = Ref<_QNModelPropertyMeta>;

    void mapToKey(const Meta &meta, const Ref<NSString> &key);
    void mapToKeys(const Meta &meta, const Ref<NSArray> &keys);
    /// Becomes the head of the chain.
    void push(const Meta &meta, const id &key);

    const Ref<NSMutableDictionary> metas_;
    const Ref<NSMutableDictionary> mapper_ = NSMutableDictionary::dictionary();
    const Ref<NSMutableArray> keyPathMetas_ = NSMutableArray::array();
    const Ref<NSMutableArray> multiKeysMetas_ = NSMutableArray::array();
};

} // namespace qn
