#include "presentation/vocabulary.h"
