#include "core/navigation.h"

Navigation navigation;
