#pragma once

#include <QToolBar>

namespace tips {

/// Suppresses the tool tips that Qt makes from the captions of buttons without a tip of their own. Call it
/// once the bar is complete.
void onlyOwn(QToolBar& bar);

}  // namespace tips
