#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "rental/rentalFixture.h"
#include "support/clipped.h"

using namespace Qt::StringLiterals;

namespace {

/// Registered a second time at one and a half times the usual scale.
class RentalCaptionsTest : public RentalTest {};

}  // namespace

TEST_F(RentalCaptionsTest, AreFullyReadable) {
    sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (9876, 'Božena Novotná', '9876')");
    const auto user = std::make_shared<SharedUser>();
    frmKlienti customers(user);
    customers.show();
    customers.Historie_Obnovit();
    customers.Vratit_Obnovit();
    customers.KVypujceni_Obnovit();
    EXPECT_EQ(clipped(customers).join(u' '), u""_s);
    frmPujcDVD lending(user);
    lending.show();
    EXPECT_EQ(clipped(lending).join(u' '), u""_s);
    user->loaded().setUSID(9876);
    user->loaded().show();
    EXPECT_EQ(clipped(user->loaded()).join(u' '), u""_s);
}
