// Owning pointers to what GLib hands out.
//
// Includes no header of GLib, so that a header of this folder may hold such a pointer and still be
// included by a program that is built without GLib's.
#pragma once

#include <memory>

// GLib's own names for its own structures.
// NOLINTBEGIN(bugprone-reserved-identifier)
using GCancellable = struct _GCancellable;
using GDBusConnection = struct _GDBusConnection;
using GError = struct _GError;
using GKeyFile = struct _GKeyFile;
using GMainContext = struct _GMainContext;
using GVariant = struct _GVariant;
// NOLINTEND(bugprone-reserved-identifier)

namespace velmora {

struct GLibRelease {
  void operator()(char* text) const noexcept;
  void operator()(GError* error) const noexcept;
  void operator()(GKeyFile* file) const noexcept;
  void operator()(GMainContext* context) const noexcept;
  void operator()(GVariant* variant) const noexcept;
};

/// Owns something of GLib's that is no GObject.
template <class Type>
using GLibPointer = std::unique_ptr<Type, GLibRelease>;

/// Owns a value that was just made. GLib leaves such values "floating", owned by nobody.
[[nodiscard]] GLibPointer<GVariant> ownVariant(GVariant* floating);

struct GObjectRelease {
  void operator()(void* object) const noexcept;
};

/// One share in a GObject, or none.
template <class Object>
class GObjectRef {
 public:
  GObjectRef() = default;

  /// Takes over the share that the caller was given; null makes an empty reference.
  [[nodiscard]] static GObjectRef adopt(Object* object) { return GObjectRef(object); }

  [[nodiscard]] Object* get() const { return object_.get(); }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  explicit GObjectRef(Object* object) : object_(object) {}

  std::unique_ptr<Object, GObjectRelease> object_;
};

}  // namespace velmora
