// What objects cost: made and destroyed, sent to, with values of others, called with boxed arguments.
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+AssociatedValues.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Invocation.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+MethodSwapping.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Message.h"

#include <benchmark/benchmark.h>

#include <optional>

namespace {

class Counter : public NSObject {
    NS_CLASS(Counter, NSObject)
public:
    std::int64_t one() { return total += 1; }
    std::int64_t two() { return total += 2; }
    id add(const Ref<NSNumber> &amount, std::int32_t times) {
        total += amount->longLongValue() * times;
        return amount;
    }

    std::int64_t total = 0;
};
NS_IMPLEMENTATION(Counter) {
    cls.method<&Counter::one>("one").method<&Counter::two>("two").method<&Counter::add>("add:times:");
}

/// Inherits its methods.
class SubCounter : public Counter {
    NS_CLASS(SubCounter, Counter)
};
NS_IMPLEMENTATION(SubCounter) {}

/// What an object would be that cannot have associated values.
class PlainCounter : public std::enable_shared_from_this<PlainCounter> {
public:
    PlainCounter() = default;
    PlainCounter(const PlainCounter &) = delete;
    PlainCounter &operator=(const PlainCounter &) = delete;
    virtual ~PlainCounter() = default;
    virtual std::int64_t one() { return total += 1; }

    std::int64_t total = 0;
};
static_assert(sizeof(Counter) == sizeof(PlainCounter));

constexpr char key = 0;

/// Other objects that have a value each.
std::vector<id> owners(std::int64_t count) {
    std::vector<id> made;
    for (std::int64_t i = 0; i < count; ++i) {
        made.push_back(make<Counter>());
        qn::setAssociatedValue(made.back(), &key, u"value"_ns);
    }
    return made;
}

template <class T>
void makeAndDestroy(benchmark::State &state) {
    const auto others = owners(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(make<T>());
}
BENCHMARK(makeAndDestroy<PlainCounter>)->Arg(0);
BENCHMARK(makeAndDestroy<Counter>)->Arg(0)->Arg(100)->Arg(10'000);

template <class Receiver, bool isSwapped>
void send(benchmark::State &state) {
    const id receiver = make<Receiver>();
    const SEL one = sel_registerName("one"), two = sel_registerName("two");
    std::optional<qn::MethodSwap> swap;
    if (isSwapped)
        swap = qn::swapMethods<Receiver>(one, two);
    for (auto _ : state)
        benchmark::DoNotOptimize(objc_msgSend<std::int64_t>(receiver, one));
}
BENCHMARK(send<Counter, false>);
BENCHMARK(send<Counter, true>);
BENCHMARK(send<SubCounter, false>);
BENCHMARK(send<SubCounter, true>);

void readAssociatedValue(benchmark::State &state) {
    const auto others = owners(1000);
    for (auto _ : state)
        benchmark::DoNotOptimize(qn::associatedValue<NSString>(others[500], &key));
}
BENCHMARK(readAssociatedValue);

void peekAssociatedValue(benchmark::State &state) {
    const auto others = owners(1000);
    qn::setAssociatedValue(others[500], &key, u"value"_ns, qn::Association::strongNonatomic);
    for (auto _ : state)
        benchmark::DoNotOptimize(qn::peekAssociatedValue<NSString>(others[500], &key));
}
BENCHMARK(peekAssociatedValue);

void setAssociatedValue(benchmark::State &state) {
    const auto others = owners(1000);
    const id value = u"other"_ns;
    for (auto _ : state)
        qn::setAssociatedValue(others[500], &key, value);
}
BENCHMARK(setAssociatedValue);

void makeWithAssociatedValue(benchmark::State &state) {
    const id value = u"value"_ns;
    for (auto _ : state) {
        const id object = make<Counter>();
        qn::setAssociatedValue(object, &key, value);
    }
}
BENCHMARK(makeWithAssociatedValue);

void boxedInvocation(benchmark::State &state) {
    const id receiver = make<Counter>();
    const SEL add = sel_registerName("add:times:");
    const id amount = NSNumber::numberWithInt(3), times = NSNumber::numberWithInt(2);
    for (auto _ : state)
        benchmark::DoNotOptimize(qn::performSelector(receiver, add, {amount, times}));
}
BENCHMARK(boxedInvocation);

} // namespace

BENCHMARK_MAIN();
