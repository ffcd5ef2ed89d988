// Where GNUstep looks for the functions that copy blocks: the runtime for blocks has them.
#pragma once

#include <Block.h>
