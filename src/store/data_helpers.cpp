#include "store/data_helpers.h"
