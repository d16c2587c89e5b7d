// Models with paths of keys and several keys, which are read and written by way of dictionaries.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Data/NSData.h"

struct OurRooms {
    /// An array of so many rooms.
    static Ref<NSData> text(int count);
    static Ref<NSArray> read(const Ref<NSData> &text);
    static Ref<NSData> write(const Ref<NSArray> &rooms);
};
