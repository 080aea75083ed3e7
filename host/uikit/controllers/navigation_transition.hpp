// host/uikit/controllers/navigation_transition.hpp: how a change of a navigation controller's stack is seen:
// one page slides over the other, by itself or under a finger, and both are told what becomes of them.
#pragma once

#include "host/uikit/controllers/navigation_controller.hpp"
#include "host/uikit/events/gesture_recognizer.hpp"

namespace wispen::uikit {

/// Puts a page's view where pages are seen.
void put_in_place(const NavigationController& self, const ViewController& controller);

/// Lets the bar show the stack's items.
void show_items(const NavigationController& self, bool animated);

/// Ends the parenthood of a page that has left the stack.
void let_go_of(const NavigationController& self, const ViewController& controller);

/// The stack has changed already, from one top page (nil at first) to another; makes that seen.
void show_change(const NavigationController& self, const ViewController& from, const ViewController& to,
                 bool back, bool animated);

/// Ends a change that is under way, as if its time were over.
void finish_transition(const NavigationController& self);

/// The way back under a finger that came from the edge.
void follow_way_back(const NavigationController& self, const ScreenEdgePanGestureRecognizer& pan);

}  // namespace wispen::uikit
