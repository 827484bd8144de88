// SPDX-License-Identifier: MIT
// What the program finds in this module.
#include <proj_experimental.h>

#include <map>
#include <memory>
#include <string>

#include "projection/Operation.h"
#include "projection/Systems.h"

namespace tesselink {
namespace {

class ProjSystems final : public CoordinateSystems {
 public:
  CoordinateSystem Describe(const std::string& definition) override {
    return Description(proj_, Known(definition).get(), definition);
  }

  std::unique_ptr<CoordinateOperation> Between(const std::string& from, const std::string& to,
                                               bool allowBallpark) override {
    ProjObject source = Known(from), target = Known(to);
    if (!HasHeights(proj_, source.get()) || !HasHeights(proj_, target.get())) {
      source = WithoutHeights(std::move(source));
      target = WithoutHeights(std::move(target));
    }
    if (IsSame(proj_, source.get(), target.get())) return nullptr;
    return std::make_unique<Operation>(proj_, std::move(source), std::move(target), allowBallpark);
  }

 private:
  ProjObject WithoutHeights(ProjObject system) {
    if (!HasHeights(proj_, system.get())) return system;
    const ProjObject plane = PlaneOf(proj_, system.get());
    return ProjObject(proj_crs_demote_to_2D(proj_, nullptr, plane.get()));
  }

  // A system that was described is asked for again.
  ProjObject Known(const std::string& definition) {
    ProjObject& system = known_[definition];
    if (!system) system = SystemOf(proj_, definition);
    return ProjObject(proj_clone(proj_, system.get()));
  }

  Proj proj_;
  std::map<std::string, ProjObject> known_;
};

}  // namespace
}  // namespace tesselink

extern "C" tesselink::CoordinateSystems* Create() { return new tesselink::ProjSystems; }
