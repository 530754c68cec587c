#include "VornDefine.h"
