// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Service.h"

Work& Work::operator+=(const Work& other) {
  sets += other.sets;
  refused += other.refused;
  created += other.created;
  destroyed += other.destroyed;
  notifications += other.notifications;
  return *this;
}
