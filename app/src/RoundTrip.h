#pragma once

/// @file
/// The way of a value into each of its representations and back.

#include <string>
#include <vector>

#include "ColumnKind.h"

namespace nkdt::app {

/// A representation with its name and the way through it.
struct Road {
    const char* name;
    Representation representation;
    /// Takes the value of @p from into the representation and from there into @p to. Throws what the class
    /// throws.
    void (*travel)(Cell& from, Cell& to);
};

/// The roads that every value can take.
const std::vector<Road>& roads();
/// These, and those that only values of that kind can take.
const std::vector<Road>& roadsOf(const ColumnKind& kind);

/// How a value came back.
struct Arrival {
    enum Outcome { survived, notRepresentable, lost };
    Outcome outcome = survived;
    std::string reason;  ///< what the representation states, or what went wrong; UTF-8
};

/// Sends the value of @p from down the road. What comes back is in @p back, another cell of the same kind.
Arrival travel(const Road& road, Cell& from, Cell& back);

}  // namespace nkdt::app
