#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelDiagnosis.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelReader.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelText.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"

Ref<NSArray> qn::modelArrayWithClass(Class cls, const Ref<NSArray> &array) {
    if (!cls || !array)
        return nullptr;
    const auto models = NSMutableArray::arrayWithCapacity(array->count());
    walkElements(*array, [&](const id &element) {
        if (const id model = modelWithDictionary(cls, element))
            models->addObject(model);
    });
    return models;
}

Ref<NSArray> qn::modelArrayWithClass(Class cls, const id &json, Ref<NSError> *error) {
    const auto data = jsonData(json);
    const auto read = readModelArray(cls, data);
    auto models = read ? *read : modelArrayWithClass(cls, collectionFromJSON<NSArray>(data ? data : json));
    if (error)
        *error = diagnosis(data ? data : json, cls, ModelRoot::array, models ? models->count() : 0);
    return models;
}
