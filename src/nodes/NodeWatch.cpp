// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "nodes/NodeWatch.h"

namespace {
thread_local NodeWatch* innermost = nullptr;
}  // namespace

NodeWatch::NodeWatch(const NetSNMPNode* node) : node_(node), outer_(innermost) {
  innermost = this;
}

NodeWatch::~NodeWatch() { innermost = outer_; }

void NodeWatch::Destroyed(const NetSNMPNode* node) {
  for (NodeWatch* watch = innermost; watch != nullptr; watch = watch->outer_) {
    if (watch->node_ == node) watch->alive_ = false;
  }
}
