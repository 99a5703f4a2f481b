#pragma once

namespace tarnwick {

// What a screen reader gets of labels and buttons differs from what Qt would say by itself: an empty value is empty,
// and an action of the reader's goes the way of every click.
void UseReaderInterfaces();

} // namespace tarnwick
