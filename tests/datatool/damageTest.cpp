#include "datatool/Repair.h"
#include "datatool/Restore.h"
#include "datatool/careFixture.h"

using namespace Qt::StringLiterals;
