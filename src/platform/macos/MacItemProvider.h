// One attachment of a request of the extension host. For Objective-C++ only.
#pragma once

#include "platform/ItemProvider.h"
#include "platform/macos/ObjectHolder.h"

#import <Foundation/Foundation.h>

namespace velmora {

class MacItemProvider final : public ItemProvider {
 public:
  /// Retains `provider`.
  explicit MacItemProvider(NSItemProvider* provider);

  bool hasItemConformingTo(std::string_view typeIdentifier) const override;

  /// Delivers URLs and their data representations as URLObject. A URL that names a file by its
  /// identity, as the pasteboard does, is converted to one that names the file by its path.
  void loadItem(std::string_view typeIdentifier, LoadCompletion completion) override;

 private:
  ObjectHolder<NSItemProvider> provider_;
};

}  // namespace velmora
