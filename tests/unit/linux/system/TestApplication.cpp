// A small application for the tests: windows, and a name on the session bus. It tells what happens to it on standard
// output, does what standard input says, and ends with it.
//   window CLASS [no-pid]   ->  window ID     (when it is mapped)
//   close ID                ->  closed ID
//   own NAME LOCALIZED      ->  owned NAME    (answers the scripting interface)
//   silent NAME             ->  owned NAME    (owns the name and never answers)
//   speak LOCALIZED         ->  spoken        (answers everything that was asked of it, and from now on)
#include <poll.h>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};

class TestApplication {
 public:
  ~TestApplication() {
    for (auto* call : unanswered_) sd_bus_message_unref(call);
    sd_bus_flush_close_unref(bus_);
    if (x_ != nullptr) xcb_disconnect(x_);
  }

  int run() {
    for (;;) {
      serve();
      pollfd waiting[] = {{STDIN_FILENO, POLLIN, 0},
                          {x_ != nullptr ? xcb_get_file_descriptor(x_) : -1, POLLIN, 0},
                          {bus_ != nullptr ? sd_bus_get_fd(bus_) : -1, POLLIN, 0}};
      poll(waiting, 3, -1);
      if (waiting[0].revents != 0 && !readCommands()) return 0;
    }
  }

 private:
  void serve() {
    if (bus_ != nullptr) {
      while (sd_bus_process(bus_, nullptr) > 0) {
      }
    }
    while (x_ != nullptr) {
      std::unique_ptr<xcb_generic_event_t, Free> const event(xcb_poll_for_event(x_));
      if (!event) break;
      auto const type = event->response_type & 0x7F;
      if (type == XCB_MAP_NOTIFY) tell("window", reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window);
      if (type == XCB_DESTROY_NOTIFY) {
        tell("closed", reinterpret_cast<xcb_destroy_notify_event_t*>(event.get())->window);
      }
    }
  }

  static void tell(char const* what, std::uint32_t window) { std::cout << what << ' ' << window << std::endl; }

  bool readCommands() {
    char buffer[512];
    auto const count = read(STDIN_FILENO, buffer, sizeof buffer);
    if (count <= 0) return false;
    rest_.append(buffer, static_cast<std::size_t>(count));
    for (auto end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n')) {
      std::istringstream line(rest_.substr(0, end));
      rest_.erase(0, end + 1);
      obey(line);
    }
    return true;
  }

  void obey(std::istringstream& line) {
    std::string verb;
    std::string argument;
    line >> verb >> argument >> std::ws;
    std::string option;
    std::getline(line, option);
    if (verb == "window") open(argument, option);
    if (verb == "close") {
      xcb_destroy_window(x_, static_cast<std::uint32_t>(std::stoul(argument)));
      xcb_flush(x_);
    }
    if (verb == "own") {
      localizedName_ = option;
      own(argument);
    }
    if (verb == "silent") {
      isSilent_ = true;
      own(argument);
    }
    if (verb == "speak") speak(argument);
  }

  void open(std::string const& name, std::string const& option) {
    if (x_ == nullptr) x_ = xcb_connect(nullptr, nullptr);
    auto const* screen = xcb_setup_roots_iterator(xcb_get_setup(x_)).data;
    auto const window = xcb_generate_id(x_);
    std::uint32_t const events[] = {XCB_EVENT_MASK_STRUCTURE_NOTIFY};
    xcb_create_window(x_, XCB_COPY_FROM_PARENT, window, screen->root, 20, 20, 200, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK, events);
    std::string const classes = "instance" + std::string(1, '\0') + name + std::string(1, '\0');
    xcb_change_property(x_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(classes.size()), classes.data());
    if (option != "no-pid") {
      auto const cookie = xcb_intern_atom(x_, 0, 11, "_NET_WM_PID");
      std::unique_ptr<xcb_intern_atom_reply_t, Free> const atom(xcb_intern_atom_reply(x_, cookie, nullptr));
      auto const process = static_cast<std::uint32_t>(getpid());
      xcb_change_property(x_, XCB_PROP_MODE_REPLACE, window, atom->atom, XCB_ATOM_CARDINAL, 32, 1, &process);
    }
    xcb_map_window(x_, window);
    xcb_flush(x_);
  }

  void own(std::string const& name) {
    if (sd_bus_open_user(&bus_) < 0) std::exit(1);
    auto const asked = [](sd_bus_message* call, void* self, sd_bus_error*) {
      return static_cast<TestApplication*>(self)->answer(call);
    };
    sd_bus_add_object(bus_, nullptr, "/scripting", asked, this);
    if (sd_bus_request_name(bus_, name.c_str(), 0) < 0) std::exit(1);
    std::cout << "owned " << name << std::endl;
  }

  int answer(sd_bus_message* call) {
    if (isSilent_) {
      unanswered_.push_back(sd_bus_message_ref(call));
      return 1;
    }
    return sd_bus_reply_method_return(call, "v", "s", localizedName_.c_str());
  }

  void speak(std::string const& localizedName) {
    isSilent_ = false;
    localizedName_ = localizedName;
    for (auto* call : unanswered_) {
      answer(call);
      sd_bus_message_unref(call);
    }
    unanswered_.clear();
    std::cout << "spoken" << std::endl;
  }

  xcb_connection_t* x_ = nullptr;
  sd_bus* bus_ = nullptr;
  bool isSilent_ = false;
  std::string localizedName_;
  std::vector<sd_bus_message*> unanswered_;
  std::string rest_;
};

}  // namespace

int main() {
  return TestApplication().run();
}
