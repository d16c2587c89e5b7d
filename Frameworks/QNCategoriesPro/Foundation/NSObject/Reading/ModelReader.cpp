#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelReader.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNesting.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelSetting.h"
#include "Platform/Foundation/Serialization/JSON/JSONBuilder.h"

#include <algorithm>
#include <vector>

namespace {

using PropertyMeta = _QNModelPropertyMeta;

bool isOfModelClass(const PropertyMeta &property) {
    return property.valueType() == QNEncodingTypeObject && property._cls &&
           property._nsType == qn::FoundationKind::None;
}

bool isArray(const PropertyMeta &property) {
    return property._nsType == qn::FoundationKind::Array ||
           property._nsType == qn::FoundationKind::MutableArray;
}

/// The record of the class when it is plain.
Ref<_QNModelMeta> plainMeta(Class cls) {
    auto meta = _QNModelMeta::metaWithClass(cls);
    return meta && meta->_isPlain ? meta : nullptr;
}

/// Whether filling a model of the class, and whatever it may hold, runs no code of those classes.
bool isQuiet(Class cls, std::vector<Class> &met) {
    if (std::ranges::count(met, cls) > 0)
        return true;
    met.push_back(cls);
    const auto meta = _QNModelMeta::metaWithClass(cls);
    return !meta->_runsOwnCode &&
           std::ranges::all_of(meta->_modelClasses, [&](Class each) { return isQuiet(each, met); });
}

/// Receives the parser's events. Plain models that are being filled, and arrays of them, are frames here; all
/// other values, including whole containers, are left to the builder.
class ModelReader final : public JSONHandler {
public:
    explicit ModelReader(Ref<_QNModelMeta> meta, bool anArray)
        : rootMeta_(std::move(meta)), anArray_(anArray) {}

    id model() { return std::move(model_); }
    std::vector<id> elements() { return std::move(elements_); }
    bool gaveUp() const { return gaveUp_; }
    const char *refusal() const override { return builder_.refusal(); }

    bool Null() override { return leaf(scalars().null()); }
    bool Bool(bool flag) override { return leaf(scalars().boolean(flag)); }
    bool Int64(std::int64_t number) override { return leaf(scalars().number(number)); }
    bool Uint64(std::uint64_t number) override { return leaf(scalars().number(number)); }
    bool Double(double number) override { return leaf(scalars().number(number)); }
    bool String(std::string_view bytes) override { return leaf(scalars().text(bytes)); }
    bool Key(std::string_view bytes) override {
        return depthInBuilder_ > 0 ? builder_.Key(bytes) : lookUp(bytes);
    }

    bool StartObject() override {
        if (depthInBuilder_ > 0)
            return leaveToBuilder(&JSONBuilder::StartObject);
        if (frames_.empty())
            return !anArray_ && openModel(rootMeta_);
        const Frame &frame = frames_.back();
        const auto meta = frame.model ? metaOfNewModel(frame) : frame.meta;
        return (meta && openModel(meta)) || leaveToBuilder(&JSONBuilder::StartObject);
    }

    bool StartArray() override {
        if (depthInBuilder_ > 0)
            return leaveToBuilder(&JSONBuilder::StartArray);
        if (frames_.empty())
            return anArray_ && openArray(rootMeta_);
        const PropertyMeta *property = frames_.back().onlyProperty();
        const auto meta = property && property->_genericCls && isArray(*property)
                              ? plainMeta(property->_genericCls)
                              : nullptr;
        return meta ? openArray(meta) : leaveToBuilder(&JSONBuilder::StartArray);
    }

    bool EndObject(std::size_t count) override {
        if (depthInBuilder_ > 0)
            return builder_.EndObject(count) && leftBuilder();
        id model = std::move(frames_.back().model);
        close();
        if (!frames_.empty())
            return take(model);
        model_ = std::move(model);
        return true;
    }

    bool EndArray(std::size_t count) override {
        if (depthInBuilder_ > 0)
            return builder_.EndArray(count) && leftBuilder();
        if (frames_.size() == 1) { // the elements of the outermost array that are not models are left out
            std::erase_if(elements_,
                          [&](const id &each) { return each->isa() != rootMeta_->_classInfo->cls(); });
            frames_.clear();
            return true;
        }
        const auto first = elements_.begin() + static_cast<std::ptrdiff_t>(frames_.back().firstElement);
        const auto array = NSArray::arrayWithObjects(
            std::vector<id>(std::move_iterator(first), std::move_iterator(elements_.end())));
        elements_.erase(first, elements_.end());
        close();
        return take(array);
    }

private:
    struct Frame {
        Ref<_QNModelMeta> meta; // of the model, or of the elements
        id model;               // none: an array
        std::size_t firstSeen, firstElement;
        const qn::ModelKeyIndex::Slot *slot = nullptr; // of the key whose value comes next

        /// The property that the next value goes to, when it is one.
        const PropertyMeta *onlyProperty() const {
            return model && slot && !slot->head->_next ? slot->head : nullptr;
        }
    };

    /// The record of the model that an object of the text becomes, if a new one is made for it: the property
    /// holds none yet and does not copy.
    static Ref<_QNModelMeta> metaOfNewModel(const Frame &frame) {
        const PropertyMeta *property = frame.onlyProperty();
        return property && isOfModelClass(*property) && !(property->_type & QNEncodingTypePropertyCopy) &&
                       !property->get<id>(*frame.model)
                   ? plainMeta(property->_cls)
                   : nullptr;
    }

    /// What a key reaches in the models of a class.
    struct Target {
        Ref<_QNModelMeta> meta;                        // none: the key is not valid UTF-8
        const qn::ModelKeyIndex::Slot *slot = nullptr; // null: nothing
    };

    Target targetOf(std::string_view key, const Ref<_QNModelMeta> &meta) {
        const auto &text = builder_.scalars().key(key);
        return text ? Target{meta, meta->_keys.find(*text)} : Target{};
    }

    /// False for a key that occurred before, and for one that is not valid UTF-8.
    bool lookUp(std::string_view key) {
        Frame &frame = frames_.back();
        const Target &recent = targets_.find(key, [&] { return targetOf(key, frame.meta); });
        if (!recent.meta)
            return false;
        frame.slot = recent.meta == frame.meta ? recent.slot : targetOf(key, frame.meta).slot;
        gaveUp_ = frame.slot && !isFirst(frame);
        return !gaveUp_;
    }

    bool isFirst(const Frame &frame) {
        return !std::exchange(seen_[frame.firstSeen + frame.meta->_keys.numberOf(*frame.slot)], 1);
    }

    bool openModel(const Ref<_QNModelMeta> &meta) {
        id model = class_createInstance(meta->_classInfo->cls());
        return model && open(meta, std::move(model));
    }
    bool openArray(const Ref<_QNModelMeta> &meta) { return open(meta, nullptr); }

    bool open(Ref<_QNModelMeta> meta, id model) {
        const std::size_t keys = model ? meta->_keys.size() : 0;
        frames_.push_back({std::move(meta), std::move(model), seen_.size(), elements_.size()});
        seen_.resize(seen_.size() + keys);
        return builder_.enter();
    }
    void close() {
        builder_.leave();
        seen_.resize(frames_.back().firstSeen);
        frames_.pop_back();
    }

    bool leaveToBuilder(bool (JSONBuilder::*start)()) {
        ++depthInBuilder_;
        return (builder_.*start)();
    }
    bool leftBuilder() { return --depthInBuilder_ > 0 || take(builder_.take()); }

    JSONScalars &scalars() { return builder_.scalars(); }
    bool leaf(const id &value) { return value && (depthInBuilder_ > 0 ? builder_.add(value) : take(value)); }

    /// Puts a value into the innermost frame.
    bool take(const id &value) {
        if (frames_.empty())
            return false;
        const Frame &frame = frames_.back();
        if (!frame.model)
            elements_.push_back(value);
        else if (frame.slot)
            for (const PropertyMeta *each = frame.slot->head; each; each = each->_next.get())
                ModelSetValueForProperty(*frame.model, value, *each);
        return true;
    }

    const Ref<_QNModelMeta> rootMeta_;
    const bool anArray_;
    JSONBuilder builder_{false};
    RecentValues<Target> targets_; // with these, a thousand models are read in 0.89 times the time
    std::size_t depthInBuilder_ = 0;
    std::vector<Frame> frames_;
    std::vector<char> seen_; // per frame, from its `firstSeen` on: 1 for the number of each key that occurred
    std::vector<id> elements_; // per frame, from its `firstElement` on
    id model_;
    bool gaveUp_ = false;
};

/// Runs `finish` on what has been read.
template <class Result, class Finish>
std::optional<Result> read(Class cls, const Ref<NSData> &json, bool anArray, const Finish &finish) {
    auto meta = json && !qn::ModelNesting::isUnderWay() ? plainMeta(cls) : nullptr;
    std::vector<Class> met;
    if (!meta || !isQuiet(cls, met))
        return std::nullopt;
    ModelReader reader(std::move(meta), anArray);
    const std::string_view text(reinterpret_cast<const char *>(json->bytes()), json->length());
    if (!readJSON(text, reader))
        return finish(reader);
    return reader.gaveUp() ? std::nullopt : std::optional<Result>(nullptr);
}

} // namespace

std::optional<id> qn::readModel(Class cls, const Ref<NSData> &json) {
    return read<id>(cls, json, false, [](ModelReader &reader) { return reader.model(); });
}

std::optional<Ref<NSArray>> qn::readModelArray(Class cls, const Ref<NSData> &json) {
    return read<Ref<NSArray>>(cls, json, true, [](ModelReader &reader) {
        return NSMutableArray::arrayWithObjects(reader.elements());
    });
}
