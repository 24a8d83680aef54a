#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "applescript/Value.h"

/// Values as a running script holds them: like those of events, but lists and records are shared, as the language
/// wants it, and objects know their application.
namespace morla::applescript {

struct TargetApplication;
struct Datum;
class Heap;

/// Text that grows in linear time: copies share one buffer of which each sees a beginning, and appending to the copy
/// that sees all of it extends the buffer in place.
class Text {
 public:
  Text() : Text(std::string()) {}
  explicit Text(std::string text)
      : buffer_(std::make_shared<Buffer>(std::move(text))), length_(buffer_->view().size()) {}

  [[nodiscard]] std::string_view view() const { return buffer_->view().substr(0, length_); }
  [[nodiscard]] std::string string() const { return std::string(view()); }
  [[nodiscard]] std::size_t size() const { return length_; }
  [[nodiscard]] Text appended(std::string_view more) const;

  /// What the texts of this thread hold together, in bytes. A run keeps to one thread.
  [[nodiscard]] static std::size_t liveBytes();

 private:
  /// Counts itself among liveBytes().
  class Buffer {
   public:
    explicit Buffer(std::string text);
    ~Buffer();
    Buffer(Buffer const&) = delete;
    Buffer& operator=(Buffer const&) = delete;
    void append(std::string_view more);
    [[nodiscard]] std::string_view view() const { return text_; }

   private:
    std::string text_;
  };
  std::shared_ptr<Buffer> buffer_;
  std::size_t length_;
};

/// What lists and records have in common: their heap knows them, so that it can end cycles, and their contents end one
/// after the other, so that the end of a deeply nested value needs no deep stack.
class Aggregate {
 public:
  explicit Aggregate(Heap& heap);
  virtual ~Aggregate();
  Aggregate(Aggregate const&) = delete;
  Aggregate& operator=(Aggregate const&) = delete;

  /// Counts `bytes` more for what it holds, until it ends.
  void account(std::size_t bytes);

  /// Moves all contents to the end of `out`.
  virtual void surrender(std::vector<Datum>& out) = 0;

 protected:
  [[nodiscard]] Heap& heap() const { return *heap_; }

 private:
  friend class Heap;
  Heap* heap_;
  std::size_t bytes_ = 0;
  Aggregate* previous_ = nullptr;
  Aggregate* next_ = nullptr;
};

class ListObject;
class RecordObject;
using ListReference = std::shared_ptr<ListObject>;      // never null
using RecordReference = std::shared_ptr<RecordObject>;  // never null
class ScriptInstance;
using ScriptReference = std::shared_ptr<ScriptInstance>;  // never null in a datum
class Activation;
using ActivationReference = std::shared_ptr<Activation>;  // never null in a datum
struct Handler;
struct Routine;
struct Script;

/// An object of an application, or with a null specifier the application itself.
struct ApplicationObject {
  std::shared_ptr<TargetApplication> application;  ///< never null
  SpecifierPointer specifier;
};

/// `item index of list`, what a loop variable holds.
struct ItemReference {
  ListReference list;
  std::size_t index = 0;  ///< from 0
};

/// What `a reference to x` holds for a variable of the script.
struct VariableReference {
  ActivationReference variables;
  std::size_t slot = 0;
};

/// What `a reference to p of x` holds, for a property of a record or of a script object.
struct PropertyPlace;
using PropertyReference = std::shared_ptr<PropertyPlace const>;  // never null

/// A handler as a value, which a property of another script object may hold.
struct HandlerValue {
  Handler const* handler = nullptr;  ///< never null
  ScriptReference home;
};

/// `AppleScript` and `current application`.
struct Language {
  friend bool operator==(Language, Language) = default;
};

/// A moment on the local calendar, in seconds since the beginning of 1970 there. Variables share it, as they share
/// lists: setting the day of one changes the other.
struct Date {
  explicit Date(std::int64_t moment) : seconds(std::make_shared<std::int64_t>(moment)) {}
  std::shared_ptr<std::int64_t> seconds;  ///< never null
};

/// A number in a unit of measure.
struct Measure {
  Code unit;
  double amount = 0;
  friend bool operator==(Measure const&, Measure const&) = default;
};

/// A place to put something: 'bgng', 'end ', 'befo' or 'afte' of an object.
struct InsertionPoint {
  Code position;
  std::shared_ptr<Datum const> object;
};

struct Datum {
  using Data =
      std::variant<Null, bool, std::int64_t, double, Text, TypeCode, Enumerator, FileUrl, Alias, ListReference,
                   RecordReference, ApplicationObject, ItemReference, InsertionPoint, VariableReference,
                   PropertyReference, ScriptReference, HandlerValue, Language, Date, Measure, ActivationReference>;
  Data data;

  Datum() = default;
  template <typename T>
    requires std::constructible_from<Data, T> && (!std::same_as<std::remove_cvref_t<T>, Datum>)
  Datum(T&& value) : data(std::forward<T>(value)) {}  // NOLINT(google-explicit-constructor): a datum *is* its data
  Datum(char const* text) : data(Text(text)) {}       // NOLINT(google-explicit-constructor)
  Datum(std::string text) : data(Text(std::move(text))) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] static Datum missing() { return TypeCode{"msng"_code}; }
  [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(data); }
  [[nodiscard]] bool isMissing() const {
    auto const* type = as<TypeCode>();
    return type != nullptr && type->code == "msng"_code;
  }

  template <typename T>
  [[nodiscard]] T const* as() const {
    return std::get_if<T>(&data);
  }
};

class ListObject final : public Aggregate {
 public:
  ListObject(Heap& heap, std::vector<Datum> contents);
  ~ListObject() override;
  void surrender(std::vector<Datum>& out) override;

  std::vector<Datum> items;
};

class RecordObject final : public Aggregate {
 public:
  using Fields = std::vector<std::pair<RecordKey, Datum>>;

  RecordObject(Heap& heap, Fields contents);
  ~RecordObject() override;
  void surrender(std::vector<Datum>& out) override;

  [[nodiscard]] Datum* find(RecordKey const& key);

  Fields fields;
};

struct PropertyPlace {
  Datum owner;
  RecordKey key;
};

/// Owns nothing but the certainty that everything ends: outlives all data of one run.
class Heap {
 public:
  Heap() = default;
  ~Heap();
  Heap(Heap const&) = delete;
  Heap& operator=(Heap const&) = delete;

  [[nodiscard]] ListReference makeList(std::vector<Datum> items) {
    return std::make_shared<ListObject>(*this, std::move(items));
  }
  [[nodiscard]] RecordReference makeRecord(RecordObject::Fields fields) {
    return std::make_shared<RecordObject>(*this, std::move(fields));
  }

  [[nodiscard]] ScriptReference makeScript(Script const& code, ScriptReference outer, ActivationReference creator);
  [[nodiscard]] ActivationReference makeActivation(Routine const& routine, ScriptReference home, ScriptReference me);

  /// What lists, records and script objects hold, about, in bytes.
  [[nodiscard]] std::size_t liveBytes() const { return liveBytes_; }

  /// Ends what `aggregate` holds, now or as soon as the end that is under way allows.
  void bury(Aggregate& aggregate);

 private:
  friend class Aggregate;
  std::size_t liveBytes_ = 0;
  Aggregate* first_ = nullptr;
  std::vector<Datum> graveyard_;
  bool isBurying_ = false;
};

}  // namespace morla::applescript
