#include "captureone/scripting/Classes.h"

namespace morla::captureone {
namespace {

using applescript::Code;
using applescript::KeyForm;
using applescript::Value;

/// A file that waits for being written.
class JobClass final : public ServedClass {
 public:
  explicit JobClass(Model& model) : model_(model) {}

  Code code() const override { return codes::kJob; }
  bool exists(ObjectReference const& object) const override { return model_.queue().find(object.id) != nullptr; }
  Value specifier(ObjectReference const& object) const override {
    return specifierIn(documentSpecifier(object.document), codes::kJob, KeyForm::id, object.id);
  }

  Reading read(ObjectReference const& object, Code property) const override {
    auto const* job = model_.queue().find(object.id);
    if (job == nullptr) return failures::cannotGet(specifier(object));
    if (property == codes::kId) return Value(job->id);
    if (property == Code("CQin")) return Value(job->image.name);
    if (property == Code("CQip")) return Value(job->image.path);
    return failures::notSimulated("such property of a job", specifier(object));
  }

  Failure write(ObjectReference const& object, Code, Content const&) override {
    return failures::notModifiable(specifier(object));
  }
  std::optional<std::vector<ObjectReference>> elements(ObjectReference const&, Code) const override { return {}; }

 private:
  Model& model_;
};

}  // namespace

std::unique_ptr<ServedClass> makeJobClass(Model& model) {
  return std::make_unique<JobClass>(model);
}

}  // namespace morla::captureone
