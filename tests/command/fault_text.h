// The text of what a call throws, to be compared whole.
#pragma once

#include "tests/host/fault_text.h"
