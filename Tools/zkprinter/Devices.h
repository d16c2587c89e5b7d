// How an attached printer shows in JSON.
#pragma once

#include "Tools/zkprinter/Json.h"

class ZKUSB;

void describe(Json &json, ZKUSB &printer);
