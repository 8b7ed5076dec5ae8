#pragma once

#include <memory>

#include "rental/frmUser.h"

/// The customer form shared by several windows. It is created on first use and keeps its input until
/// unloaded.
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
