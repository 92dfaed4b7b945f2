#pragma once
// The timetable compiler library in one include: set-up of the simulator
// installation, the definition with its records, tokens and faults, and the
// formatting of times.
//
//   quorvel_init(definitionPath);
//   Fahrplandefinition definition;
//   definition.read(stream, definitionPath);
//   definition.execute(false, nullptr);  // throws Error on a fault
//   definition.validate();               // warnings: getWarnungen()
#include "export.h"
#include "external/installation.h"
#include "model/fahrplandefinition.h"
#include "output/zeit.h"
