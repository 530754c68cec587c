// What Facebook and the system hold open at once, whatever it is: for tests to which the kind does not matter.
#pragma once

#include <cstddef>

namespace Tarvik::Vorn::Test {

// Login pages, friend finders, dialogs, uploads, prompts and changes of the photo library.
size_t OpenThingCount();

// Ends each of them as it ends when all goes well. What opens meanwhile stays open.
void SucceedWithWhatIsOpen();

} // namespace Tarvik::Vorn::Test
