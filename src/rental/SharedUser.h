#pragma once

#include <memory>

#include "rental/frmUser.h"

/// The one customer form that several windows show. It is made when it is first needed and keeps what was
/// entered until it is unloaded.
class SharedUser final {
 public:
    frmUser& loaded() {
        if (form_ == nullptr) form_ = std::make_unique<frmUser>();
        return *form_;
    }
    void unload() { form_.reset(); }

 private:
    std::unique_ptr<frmUser> form_;
};
