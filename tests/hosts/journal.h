// tests/hosts/journal.h - what a host object in a test was asked for, and which call is to fail.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/hosts/host_failure.h"

struct tagVARIANT;

namespace corvelle::testing {

class MemberCall;

// The calls that the objects of one host got, in order. Any one of them can be made to fail.
class Journal {
 public:
  // Notes `call`; throws the failure that is planned for it.
  void note(std::string call) {
    calls_.push_back(std::move(call));
    if (on_call) on_call(calls_.back());
    if (failure_ && calls_.size() == failing_call_) throw HostFailure(*failure_);
  }

  // Makes the call with that number, counted from 1, fail with `failure`.
  void fail_call(std::size_t number, HostFailure failure) {
    failing_call_ = number;
    failure_ = std::move(failure);
  }

  // Forgets the calls so far and the planned failure.
  void start_anew() {
    calls_.clear();
    failure_.reset();
  }

  const std::vector<std::string>& calls() const { return calls_; }
  // How many objects of the host somebody holds a reference to.
  int live_objects() const { return live_objects_; }

  std::function<void(const std::string& call)> on_call;  // runs within each call, before it fails or answers
  // Where there are COM objects: asked before a member is run; an HRESULT is answered in the member's place.
  std::function<std::optional<std::int32_t>(MemberCall& call)> answers_instead;
  // Likewise before a member's name is looked up, and before an enumerator gives its next item into the VARIANT.
  std::function<std::optional<std::int32_t>()> looks_up_instead;
  std::function<std::optional<std::int32_t>(tagVARIANT& item)> steps_instead;

 private:
  friend class LiveObject;

  std::vector<std::string> calls_;
  std::size_t failing_call_ = 0;
  std::optional<HostFailure> failure_;
  int live_objects_ = 0;
};

// Counts the object that it is a member of as long as that lives.
class LiveObject {
 public:
  explicit LiveObject(Journal& journal) : journal_(journal) { ++journal_.live_objects_; }
  ~LiveObject() { --journal_.live_objects_; }
  LiveObject(const LiveObject&) = delete;
  LiveObject& operator=(const LiveObject&) = delete;

 private:
  Journal& journal_;
};

}  // namespace corvelle::testing
