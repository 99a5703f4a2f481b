#pragma once

namespace tarnwick {

// A screen reader gets what differs from Qt's own account: what is hidden or covered doesn't exist, an empty value is
// empty, and an action of the reader's is a click like any other.
void UseReaderInterfaces();

} // namespace tarnwick
