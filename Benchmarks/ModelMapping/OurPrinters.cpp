#include "Benchmarks/ModelMapping/OurPrinters.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+Model.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelValue.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

namespace {

class ContactModel : public NSObject {
    NS_CLASS(ContactModel, NSObject)
public:
    std::int32_t identifier = 0;
    Ref<NSString> name, mail;
    bool active = false;

    id copy() const override { return qn::modelCopy(self()); }
    NSUInteger hash() const override { return qn::modelHash(self()); }
    bool isEqual(const id &other) const override { return qn::modelIsEqual(self(), other); }
};
NS_IMPLEMENTATION(ContactModel) {
    cls.property<&ContactModel::identifier>("identifier")
        .property<&ContactModel::name>("name")
        .property<&ContactModel::mail>("mail")
        .property<&ContactModel::active>("active");
}

class PrinterModel : public NSObject {
    NS_CLASS(PrinterModel, NSObject)
public:
    bool enabled = false, shared = false;
    std::int8_t trays = 0;
    std::uint8_t priority = 0;
    std::int16_t offset = 0;
    std::uint16_t port = 0;
    std::int32_t jobs = 0;
    std::uint32_t flags = 0;
    std::int64_t balance = 0;
    std::uint64_t printed = 0;
    float density = 0;
    double level = 0;
    Ref<NSString> name, model, location, queue, comment, state;
    Ref<NSDate> installed;
    Ref<NSURL> address;
    Ref<ContactModel> contact;
    Ref<NSArray> tags;

    id copy() const override { return qn::modelCopy(self()); }
    NSUInteger hash() const override { return qn::modelHash(self()); }
    bool isEqual(const id &other) const override { return qn::modelIsEqual(self(), other); }
};
NS_IMPLEMENTATION(PrinterModel) {
    cls.property<&PrinterModel::enabled>("enabled")
        .property<&PrinterModel::shared>("shared")
        .property<&PrinterModel::trays>("trays")
        .property<&PrinterModel::priority>("priority")
        .property<&PrinterModel::offset>("offset")
        .property<&PrinterModel::port>("port")
        .property<&PrinterModel::jobs>("jobs")
        .property<&PrinterModel::flags>("flags")
        .property<&PrinterModel::balance>("balance")
        .property<&PrinterModel::printed>("printed")
        .property<&PrinterModel::density>("density")
        .property<&PrinterModel::level>("level")
        .property<&PrinterModel::name>("name")
        .property<&PrinterModel::model>("model")
        .property<&PrinterModel::location>("location")
        .property<&PrinterModel::queue>("queue")
        .property<&PrinterModel::comment>("comment")
        .property<&PrinterModel::state>("state")
        .property<&PrinterModel::installed>("installed")
        .property<&PrinterModel::address>("address")
        .property<&PrinterModel::contact>("contact")
        .property<&PrinterModel::tags>("tags");
}

} // namespace

OurPrinters::Objects OurPrinters::read(const Text &text) {
    return qn::modelArrayWithClass(PrinterModel::class_(), text);
}

OurPrinters::Text OurPrinters::write(const Objects &objects) {
    return qn::modelToJSONData(objects);
}
