#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+Model.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelDiagnosis.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"

Ref<NSDictionary> qn::modelDictionaryWithClass(Class cls, const Ref<NSDictionary> &dictionary) {
    if (!cls || !dictionary)
        return nullptr;
    const auto models = NSMutableDictionary::dictionaryWithCapacity(dictionary->count());
    walkEntries(*dictionary, [&](const id &key, const id &value) {
        if (const id model = modelWithDictionary(cls, value))
            models->setObject(model, key);
    });
    return models;
}

Ref<NSDictionary> qn::modelDictionaryWithClass(Class cls, const id &json, Ref<NSError> *error) {
    auto models = modelDictionaryWithClass(cls, _dictionaryWithJSON(json));
    if (error)
        *error = diagnosis(json, cls, ModelRoot::dictionary, models ? models->count() : 0);
    return models;
}
