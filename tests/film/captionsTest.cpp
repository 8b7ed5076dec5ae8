#include "film/editorFixture.h"
#include "support/clipped.h"

using namespace Qt::StringLiterals;

namespace {

/// Registered a second time at one and a half times the usual scale.
class EditorCaptionsTest : public EditorTest {};

}  // namespace

TEST_F(EditorCaptionsTest, AreFullyReadable) {
    EXPECT_EQ(clipped(open(0)).join(u' '), u""_s);
}
