#include "platform/runtime/runtime_error.h"
