#include "Book.h"

#include <Platform/Foundation/Collections/NSArray.h>
#include <Platform/Foundation/Text/NSString.h>

NS_PROPERTIES(Book, title, pages, (chapters, Book))
