// GNUstep includes this header for the functions that copy blocks. The blocks runtime declares
// them.
#pragma once

#include <Block.h>
