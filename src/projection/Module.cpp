// What the program finds in this module.
#include <proj_experimental.h>

#include <memory>
#include <string>

#include "projection/Operation.h"
#include "projection/Systems.h"

namespace tesselink {
namespace {

class ProjSystems final : public CoordinateSystems {
 public:
  CoordinateSystem Describe(const std::string& definition) override {
    return Description(proj_, SystemOf(proj_, definition).get(), definition);
  }

  std::unique_ptr<CoordinateOperation> Between(const std::string& from, const std::string& to,
                                               bool allowBallpark) override {
    ProjObject source = SystemOf(proj_, from), target = SystemOf(proj_, to);
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

  Proj proj_;
};

}  // namespace
}  // namespace tesselink

extern "C" tesselink::CoordinateSystems* Create() { return new tesselink::ProjSystems; }
