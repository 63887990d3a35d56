#include "family/check_family.h"
