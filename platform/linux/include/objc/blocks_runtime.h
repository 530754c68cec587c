// GNUstep's headers look for the block functions under this name.
#pragma once

#include <Block.h>
