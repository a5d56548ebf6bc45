// QtServices is declared beside the interface it implements.
#pragma once

#include "platform/Services.h"
