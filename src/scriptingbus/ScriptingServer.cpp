#include "scriptingbus/ScriptingServer.h"

#include <cstring>
#include <utility>
#include <variant>

#include "scriptingbus/BusHandles.h"
#include "scriptingbus/EventCodec.h"
#include "scriptingbus/Protocol.h"

namespace morla::scriptingbus {

using applescript::AppleEvent;
using applescript::EventError;
using applescript::EventReply;

namespace {

/// The connection and what is served on it. Shared with the answers that are still due, which may outlive the server.
struct Service {
  ServedApplication application;
  ScriptingServer::Handler handler;
  BusPointer bus;
};

MessagePointer replyTo(sd_bus_message* call, EventReply const& reply) {
  sd_bus_message* raw = nullptr;
  if (sd_bus_message_new_method_return(call, &raw) < 0) return nullptr;
  MessagePointer message(raw);
  auto const problem = writeReply(message.get(), reply);
  if (!problem) return message;
  // What was written so far is of no use: an application whose value cannot travel has an error to tell instead.
  message.reset();
  if (sd_bus_message_new_method_return(call, &raw) < 0) return nullptr;
  message.reset(raw);
  return writeReply(message.get(), *problem) ? nullptr : std::move(message);
}

void sendReply(sd_bus* bus, sd_bus_message* call, EventReply const& reply) {
  if (sd_bus_message_get_expect_reply(call) <= 0) return;
  auto const message = replyTo(call, reply);
  if (message == nullptr || sd_bus_send(bus, message.get(), nullptr) < 0) return;
  // Whoever waits for the descriptor waits for reading only, so nothing may stay behind in the queue.
  sd_bus_flush(bus);
}

/// The one answer that an event gets.
class PendingAnswer {
 public:
  PendingAnswer(std::weak_ptr<Service> service, sd_bus_message* call)
      : service_(std::move(service)), call_(sd_bus_message_ref(call)) {}

  void give(EventReply const& reply) {
    auto const call = std::exchange(call_, nullptr);
    auto const service = service_.lock();
    if (call != nullptr && service != nullptr) sendReply(service->bus.get(), call.get(), reply);
  }

 private:
  std::weak_ptr<Service> service_;
  MessagePointer call_;
};

class BusScriptingServer final : public ScriptingServer {
 public:
  explicit BusScriptingServer(std::shared_ptr<Service> service) : service_(std::move(service)) {}
  BusScriptingServer(BusScriptingServer const&) = delete;
  BusScriptingServer& operator=(BusScriptingServer const&) = delete;
  ~BusScriptingServer() override {
    // Waits for the bus, unlike closing the connection: whoever asks from now on finds the name free.
    if (service_->bus != nullptr) {
      sd_bus_release_name(service_->bus.get(), service_->application.busName.c_str());
    }
  }

  /// Empty when it is served from now on, else why not.
  [[nodiscard]] std::string start();

  [[nodiscard]] int fileDescriptor() const override { return sd_bus_get_fd(service_->bus.get()); }
  bool process() override;
  [[nodiscard]] sd_bus* connection() const override { return service_->bus.get(); }

 private:
  static int onDictionary(sd_bus_message* call, void* self, sd_bus_error* error);
  static int onSend(sd_bus_message* call, void* self, sd_bus_error* error);
  static int onProperty(sd_bus* bus, char const* path, char const* interface, char const* property,
                        sd_bus_message* reply, void* self, sd_bus_error* error);
  static sd_bus_vtable const kTable[];

  std::shared_ptr<Service> service_;
};

// The macros of sd-bus are C: they cast and initialise as C does.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wold-style-cast"
#pragma GCC diagnostic ignored "-Wpedantic"
#ifdef __clang__
#pragma GCC diagnostic ignored "-Wc99-designator"
#endif
sd_bus_vtable const BusScriptingServer::kTable[] = {
    SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("Dictionary", "", "s", onDictionary, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_METHOD("Send", kSendArguments, kSendResult, onSend, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_PROPERTY("Name", "s", onProperty, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_PROPERTY("Version", "s", onProperty, 0, SD_BUS_VTABLE_PROPERTY_CONST),
    SD_BUS_VTABLE_END};
#pragma GCC diagnostic pop

std::string BusScriptingServer::start() {
  sd_bus* raw = nullptr;
  int result = sd_bus_open_user(&raw);
  if (result < 0) return std::string("There is no session bus: ") + std::strerror(-result) + ".";
  service_->bus.reset(raw);
  // Before the name: a program that waits for the name may call at once.
  result = sd_bus_add_object_vtable(raw, nullptr, kScriptingPath, kScriptingInterface, kTable, this);
  if (result < 0) return std::string("The session bus cannot be served: ") + std::strerror(-result) + ".";

  auto const& name = service_->application.busName;
  result = sd_bus_request_name(raw, name.c_str(), 0);
  if (result >= 0) return {};
  if (result == -EEXIST) return "The name " + name + " is taken on the session bus: the application runs already.";
  return "The name " + name + " cannot be taken on the session bus: " + std::strerror(-result) + ".";
}

bool BusScriptingServer::process() {
  auto const service = service_;  // a handler may end the server
  int result = 1;
  while (result > 0) result = sd_bus_process(service->bus.get(), nullptr);
  return result == 0 && sd_bus_is_open(service->bus.get()) > 0;
}

int BusScriptingServer::onDictionary(sd_bus_message* call, void* self, sd_bus_error*) {
  auto const& service = *static_cast<BusScriptingServer*>(self)->service_;
  return sd_bus_reply_method_return(call, "s", service.application.dictionary.c_str());
}

int BusScriptingServer::onProperty(sd_bus*, char const*, char const*, char const* property, sd_bus_message* reply,
                                   void* self, sd_bus_error*) {
  auto const& application = static_cast<BusScriptingServer*>(self)->service_->application;
  auto const& value = std::strcmp(property, "Name") == 0 ? application.name : application.version;
  return sd_bus_message_append_basic(reply, SD_BUS_TYPE_STRING, value.c_str());
}

int BusScriptingServer::onSend(sd_bus_message* call, void* self, sd_bus_error*) {
  auto const service = static_cast<BusScriptingServer*>(self)->service_;
  auto event = readEvent(call);
  if (auto const* const problem = std::get_if<EventError>(&event)) {
    sendReply(service->bus.get(), call, *problem);
    return 1;
  }
  auto pending = std::make_shared<PendingAnswer>(service, call);
  service->handler(std::get<AppleEvent>(std::move(event)),
                   [pending](EventReply const& reply) { pending->give(reply); });
  return 1;
}

}  // namespace

ScriptingServer::Opened ScriptingServer::open(ServedApplication application, Handler handler) {
  auto service = std::make_shared<Service>(Service{std::move(application), std::move(handler), nullptr});
  auto server = std::make_unique<BusScriptingServer>(std::move(service));
  std::string failure = server->start();
  if (!failure.empty()) return {nullptr, std::move(failure)};
  return {std::move(server), {}};
}

}  // namespace morla::scriptingbus
