#include "shell/main.h"
