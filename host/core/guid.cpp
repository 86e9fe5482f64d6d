#include "guid.h"

const CGuid CGuid::s_gen_zero{};
