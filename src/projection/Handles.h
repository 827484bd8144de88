// SPDX-License-Identifier: MIT
// PROJ's objects, released with their owners.
#pragma once

#include <proj.h>

#include <memory>
#include <string>

namespace tesselink {

struct ProjRelease {
  void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
  void operator()(PJ* object) const { proj_destroy(object); }
  void operator()(PJ_OBJ_LIST* list) const { proj_list_destroy(list); }
  void operator()(PJ_OPERATION_FACTORY_CONTEXT* context) const { proj_operation_factory_context_destroy(context); }
};
using ProjContext = std::unique_ptr<PJ_CONTEXT, ProjRelease>;
using ProjObject = std::unique_ptr<PJ, ProjRelease>;
using ProjList = std::unique_ptr<PJ_OBJ_LIST, ProjRelease>;

/// A context that never asks the network, and what it had to say last.
class Proj {
 public:
  /// Throws Error when PROJ's database is not there.
  Proj();
  operator PJ_CONTEXT*() const { return context_.get(); }
  /// Forgets what was said, and tells it.
  void BeSilent() { said_.clear(); }
  const std::string& Said() const { return said_; }

 private:
  std::string said_;
  ProjContext context_;
};

/// A text of PROJ, which may be null.
inline std::string Text(const char* text) { return text == nullptr ? std::string() : text; }

}  // namespace tesselink
