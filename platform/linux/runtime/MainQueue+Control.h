// How tests and the simulator run the main queue of dispatch/dispatch.h.
//
// Unless said otherwise these are functions of the main thread and end the process with a message on another one. While
// a piece of work is running, the queue is not run again from inside it: the draining functions then return 0, as a
// nested run loop does nothing for the main queue on Apple.
#pragma once

#include "HostExport.h"

#include <cstddef>

namespace Tarvik::Vorn::Host {

// Runs what is queued now, in order, and returns how many pieces of work that was. What they post stays queued.
// An exception of a piece of work comes out of this function; the rest of the batch is then still queued, in order.
VORN_HOST_EXPORT size_t DrainMainQueue();

// Like DrainMainQueue, again and again until nothing is queued; returns how many pieces of work were run in all. Does
// not return while every piece of work posts another one.
VORN_HOST_EXPORT size_t DrainMainQueueUntilEmpty();

// How many pieces of work are queued; those being run do not count. Any thread.
VORN_HOST_EXPORT size_t MainQueueDepth();

// Runs the main thread's NSRunLoop until nothing is queued, as an app does: exceptions end the process. Returns at once
// when nothing is queued; other threads may post again at any time. Not to be called by queued work.
VORN_HOST_EXPORT void RunMainLoopUntilIdle();

// Drops everything queued without running it, and returns how many pieces of work that was. Blocks are released; the
// context of a posted function is not touched, because only that function knows how to free it.
VORN_HOST_EXPORT size_t DiscardMainQueue();

} // namespace Tarvik::Vorn::Host
