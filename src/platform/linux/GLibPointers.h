// Owning pointers to objects of GLib.
//
// No header of GLib is included. A header of this folder can therefore use such a pointer, and a
// program that is built without GLib's headers can still include it.
#pragma once

#include <memory>

// GLib's own names for its own structures.
// NOLINTBEGIN(bugprone-reserved-identifier)
using GDBusMessage = struct _GDBusMessage;
using GError = struct _GError;
using GKeyFile = struct _GKeyFile;
using GVariant = struct _GVariant;
// NOLINTEND(bugprone-reserved-identifier)

namespace velmora {

struct GLibRelease {
  void operator()(char* text) const noexcept;
  /// A list of texts that ends in null.
  void operator()(char** texts) const noexcept;
  void operator()(GError* error) const noexcept;
  void operator()(GKeyFile* file) const noexcept;
  void operator()(GVariant* variant) const noexcept;
};

/// Owns an object of GLib that is not a GObject.
template <class Type>
using GLibPointer = std::unique_ptr<Type, GLibRelease>;

/// Takes ownership of a new value. GLib returns new values with a "floating" reference, which
/// nobody owns.
[[nodiscard]] GLibPointer<GVariant> ownVariant(GVariant* floating);

struct GObjectRelease {
  void operator()(void* object) const noexcept;
};

/// One reference to a GObject, or none.
template <class Object>
class GObjectRef {
 public:
  GObjectRef() = default;

  /// Takes over a reference that the caller owns; null makes an empty object.
  [[nodiscard]] static GObjectRef adopt(Object* object) { return GObjectRef(object); }

  [[nodiscard]] Object* get() const { return object_.get(); }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  explicit GObjectRef(Object* object) : object_(object) {}

  std::unique_ptr<Object, GObjectRelease> object_;
};

}  // namespace velmora
