// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "adapter/ExceptionBarrier.h"

#include <boost/thread.hpp>
#include <exception>

namespace {
thread_local bool interrupted = false;
}  // namespace

void exception_barrier::RecordInterruption() noexcept {
  try {
    throw;
  } catch (const boost::thread_interrupted&) {
    interrupted = true;
  } catch (...) {
    // Any other exception is only logged.
  }
}

std::string exception_barrier::DescribeException() {
  try {
    throw;
  } catch (const boost::thread_interrupted&) {
    return "Interrupted in a callback.";
  } catch (const std::exception& exception) {
    return std::string("Exception in a callback: ") + exception.what();
  } catch (...) {
    return "Exception of an unknown type in a callback.";
  }
}

void exception_barrier::RaisePendingInterruption() {
  if (!interrupted) return;
  interrupted = false;
  throw boost::thread_interrupted();
}
