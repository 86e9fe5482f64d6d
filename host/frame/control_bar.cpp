#include "control_bar.h"
