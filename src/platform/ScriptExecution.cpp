#include "platform/ScriptExecution.h"

#include <chrono>
#include <functional>
#include <string_view>
#include <utility>

#include "base/Trace.h"

namespace morla::platform {
namespace {

std::string_view textOf(ScriptKind kind) {
  switch (kind) {
    case ScriptKind::probe:
      return "probe";
    case ScriptKind::status:
      return "status";
  }
  return "";
}

/// 0 while nobody traces.
std::int64_t traceStart(ScriptKind kind, std::string const& source) {
  auto* trace = Trace::active();
  if (trace == nullptr) return 0;
  auto const id = trace->nextScriptId();
  trace->line(
      {{"script", Json(id)}, {"kind", Json(textOf(kind))}, {"bytes", Json(static_cast<std::int64_t>(source.size()))}});
  return id;
}

void traceEnd(std::int64_t id, ScriptReply const& reply, Duration took) {
  auto* trace = Trace::active();
  if (trace == nullptr || id == 0) return;
  Json const error = reply.error ? Json(std::map<std::string, Json>{{"number", Json(reply.error->number)},
                                                                    {"message", Json(reply.error->message)}})
                                 : Json();
  auto const ms = std::chrono::duration<double, std::milli>(took).count();
  trace->line({{"script", Json(id)}, {"text", Json(reply.text)}, {"error", error}, {"ms", Json(ms)}});
}

}  // namespace

Task<ScriptReply> ScriptExecution::run(ScriptKind kind, std::string source) {
  auto const id = traceStart(kind, source);
  auto const start = loop_.now();
  auto& loop = loop_;
  // Not written inside the co_await: g++ 12 destroys a lambda's captures twice there.
  std::function<ScriptReply()> job = [&runner = runner_, source = std::move(source)] { return runner.execute(source); };
  ScriptReply reply =
      co_await inBackground<ScriptReply>(loop_, background_, QualityOfService::userInitiated, std::move(job));
  traceEnd(id, reply, loop.now() - start);
  co_return reply;
}

}  // namespace morla::platform
