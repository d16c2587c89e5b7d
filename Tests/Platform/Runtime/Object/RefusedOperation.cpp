// Must not compile, because of its last declaration: `wrong` does not give what was agreed on.
#include "Platform/Runtime/Object/Class.h"

inline constexpr runtime::ClassOperation<std::int32_t()> count{"count"};
inline constexpr runtime::InstanceOperation<id(id)> echo{"echo:"};
inline constexpr runtime::InstanceOperation<bool()> wrong{"wrong"};

class Reader : public NSObject {
    NS_CLASS(Reader, NSObject)
public:
    static std::int32_t theCount() { return 1; }
    Ref<Reader> theEcho(const id &) const { return nullptr; }
    std::int32_t isWrong() { return 0; }
};
static_assert(!echo.isImplementedBy<Reader, &Reader::theCount>());
static_assert(!count.isImplementedBy<Reader, &Reader::theEcho>());

NS_IMPLEMENTATION(Reader) {
    cls.implement<count, &Reader::theCount>();
    cls.implement<echo, &Reader::theEcho>();
    cls.implement<wrong, &Reader::isWrong>();
}
