#pragma once

#include <QToolBar>

namespace tips {

/// Keeps the buttons of a tool bar from telling their caption once more as tool tip, as Qt has them do when
/// they have no tip of their own. To be called when the bar is complete.
void onlyOwn(QToolBar& bar);

}  // namespace tips
