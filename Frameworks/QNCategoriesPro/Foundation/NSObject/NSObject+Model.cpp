#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelDiagnosis.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelReader.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelSetting.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelText.h"

Ref<NSDictionary> qn::_dictionaryWithJSON(const id &json) {
    return collectionFromJSON<NSDictionary>(json);
}

id qn::modelWithDictionary(Class cls, const id &dictionary) {
    const auto contents = as<NSDictionary>(dictionary);
    if (!cls || !contents)
        return nullptr;
    const Class custom = hooks::customClass(cls, contents);
    const id model = class_createInstance(custom ? custom : cls);
    return model && fillModel(*model, contents) ? model : nullptr;
}

id qn::modelWithJSON(Class cls, const id &json, Ref<NSError> *error) {
    const auto data = jsonData(json);
    const auto read = readModel(cls, data);
    id model = read ? *read : modelWithDictionary(cls, _dictionaryWithJSON(data ? data : json));
    if (error)
        *error = diagnosis(data ? data : json, cls, ModelRoot::model, model ? 1 : 0);
    return model;
}

bool qn::modelSetWithDictionary(const id &model, const id &dictionary) {
    // Setters and hooks may let go of them. NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
    const id keptModel = model, kept = dictionary;
    return keptModel && fillModel(*keptModel, kept);
}

bool qn::modelSetWithJSON(const id &model, const id &json, Ref<NSError> *error) {
    const Class cls = model ? model->isa() : nullptr;
    const bool isSet = modelSetWithDictionary(model, _dictionaryWithJSON(json));
    if (error)
        *error = diagnosis(json, cls, ModelRoot::existing, isSet ? 1 : 0);
    return isSet;
}
