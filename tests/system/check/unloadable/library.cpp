// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
int Answer();
int Answer() { return 0; }
