// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef THERMALCONTROLLER_H_
#define THERMALCONTROLLER_H_

#include <array>
#include <string>

struct Fan {
  unsigned int unit;
  unsigned int slot;
  unsigned char serial[4];
  std::string label;
  char model[16] = "AX-120";
  int speed = 0;             // in revolutions per minute
  unsigned int runTime = 0;  // in seconds
  bool enabled = true;
};

// The device: a controller that keeps a cabinet near a target temperature. It
// knows nothing of SNMP.
//
// Threads: no lock; see main().
class ThermalController {
 public:
  // The range of the sensor.
  static constexpr int kLowest = -400;
  static constexpr int kHighest = 1250;

  using Fans = std::array<Fan, 4>;

  // Lets `seconds` pass and measures.
  void Run(unsigned int seconds);

  int temperature = 215;  // in tenths of a degree Celsius, as all temperatures
  int targetTemperature = 400;
  unsigned int runTime = 0;  // in seconds
  bool fansEnabled = true;
  bool overheated = false;
  std::string location = "Plant room, cabinet 3";
  char firmware[16] = "2.4.1";
  unsigned char calibration[8] = {0x01, 0x90, 0x00, 0x10,
                                  0x02, 0x58, 0xff, 0xf0};
  Fans fans{{{1, 1, {0xfa, 0x00, 0x17, 0x01}, "intake left"},
             {1, 2, {0xfa, 0x00, 0x17, 0x02}, "intake right"},
             {1, 10, {0xfa, 0x00, 0x17, 0x0a}, "roof"},
             {2, 1, {0xfa, 0x00, 0x21, 0x01}, "power supply"}}};

 private:
  void RunFans(bool cool);
};

#endif  // THERMALCONTROLLER_H_
