// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
int Answer();
int main() { return Answer(); }
