#include "Benchmarks/ModelMapping/OurRooms.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <string>

namespace {

class RoomModel : public NSObject {
    NS_CLASS(RoomModel, NSObject)
public:
    Ref<NSString> name, street, town, note;
    std::int32_t floor = 0, seats = 0;

    static Ref<NSDictionary> keys() {
        return NSDictionary::dictionaryWithEntries(
            {{u"name"_ns, NSArray::arrayWithObjects({u"name"_ns, u"title"_ns})},
             {u"street"_ns, u"place.address.street"_ns},
             {u"town"_ns, u"place.address.town"_ns},
             {u"floor"_ns, u"place.floor"_ns}});
    }
};
NS_IMPLEMENTATION(RoomModel) {
    cls.property<&RoomModel::name>("name")
        .property<&RoomModel::street>("street")
        .property<&RoomModel::town>("town")
        .property<&RoomModel::note>("note")
        .property<&RoomModel::floor>("floor")
        .property<&RoomModel::seats>("seats")
        .implement<qn::hooks::modelCustomPropertyMapper, &RoomModel::keys>();
}

} // namespace

Ref<NSData> OurRooms::text(int count) {
    std::string text = "[";
    for (int i = 0; i < count; ++i) {
        const auto number = std::to_string(i);
        text += (i ? "," : "") + std::string(i % 2 ? R"({"name":"Room )" : R"({"title":"Room )") + number +
                R"(","note":"Has a window.","seats":)" + std::to_string(i % 30) + R"(,"place":{"floor":)" +
                std::to_string(i % 9) + R"(,"address":{"street":"Hauptstraße )" + number +
                R"(","town":"Berlin"}}})";
    }
    text += "]";
    return NSData::dataWithBytes(text.data(), text.size());
}

Ref<NSArray> OurRooms::read(const Ref<NSData> &text) {
    return qn::modelArrayWithClass(RoomModel::class_(), id(text));
}

Ref<NSData> OurRooms::write(const Ref<NSArray> &rooms) {
    return qn::modelToJSONData(rooms);
}
