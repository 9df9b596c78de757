#pragma once

class EventFeed;

// For the first process of those that cover monitors: asks for the quakes and reports which there are, or
// reports nothing and returns 1 if the request failed.
int checkQuakes(EventFeed& feed);
