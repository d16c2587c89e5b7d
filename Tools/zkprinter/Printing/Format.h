// For whom a command prints: text for people, JSON for programs.
#pragma once

enum class Format { text, json };
