#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelMapper.h"

void qn::ModelMapper::mapCustom(const Ref<NSDictionary> &keys) {
    if (!keys)
        return;
    for (const auto &[name, mapped] : keys->allEntries()) {
        const auto meta = as<_QNModelPropertyMeta>(metas_->objectForKey(name));
        if (!meta)
            continue;
        metas_->removeObjectForKey(name);
        if (const auto key = as<NSString>(mapped))
            mapToKey(meta, as<NSString>(key->copy()));
        else if (const auto several = as<NSArray>(mapped))
            mapToKeys(meta, as<NSArray>(several->copy()));
    }
}

void qn::ModelMapper::mapDeclared() {
    for (const auto &[name, each] : metas_->allEntries()) {
        const auto meta = as<_QNModelPropertyMeta>(each);
        const auto keys = NSMutableArray::array();
        for (const std::string &key : meta->_info->property()->keys)
            if (const auto text = NSString::stringWithUTF8String(key))
                keys->addObject(text);
        if (keys->count() == 0)
            continue;
        metas_->removeObjectForKey(name);
        if (keys->count() == 1)
            mapToKey(meta, as<NSString>(keys->objectAtIndex(0)));
        else
            mapToKeys(meta, as<NSArray>(keys->copy()));
    }
}

void qn::ModelMapper::mapRest() {
    for (const id &each : metas_->allValues()->allObjects()) {
        const auto meta = as<_QNModelPropertyMeta>(each);
        meta->_mappedToKey = meta->_name;
        push(meta, meta->_name);
    }
}

void qn::ModelMapper::mapToKey(const Meta &meta, const Ref<NSString> &key) {
    if (key->length() == 0)
        return;
    meta->_mappedToKey = key;
    const auto path = NSMutableArray::arrayWithArray(key->componentsSeparatedByString(u"."_ns));
    path->removeObject(u""_ns);
    if (path->count() > 1) {
        meta->_mappedToKeyPath = as<NSArray>(path->copy());
        keyPathMetas_->addObject(meta);
    }
    push(meta, key);
}

void qn::ModelMapper::mapToKeys(const Meta &meta, const Ref<NSArray> &keys) {
    const auto usable = NSMutableArray::array();
    for (const id &each : *keys) {
        const auto key = as<NSString>(each);
        if (!key || key->length() == 0)
            continue;
        const auto path = key->componentsSeparatedByString(u"."_ns);
        const bool isPath = path->count() > 1;
        usable->addObject(isPath ? id(path) : key->copy());
        if (!meta->_mappedToKey) {
            meta->_mappedToKey = as<NSString>(key->copy());
            meta->_mappedToKeyPath = isPath ? path : nullptr;
        }
    }
    if (usable->count() == 0)
        return;
    meta->_mappedToKeyArray = as<NSArray>(usable->copy());
    multiKeysMetas_->addObject(meta);
    push(meta, keys);
}

void qn::ModelMapper::push(const Meta &meta, const id &key) {
    meta->_next = as<_QNModelPropertyMeta>(mapper_->objectForKey(key));
    mapper_->setObject(meta, key);
}

Ref<NSDictionary> qn::ModelMapper::mapper() const {
    return mapper_->count() > 0 ? as<NSDictionary>(mapper_->copy()) : nullptr;
}
