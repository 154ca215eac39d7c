#pragma once

/// What keeps a long operation from being started twice or left behind: set while it runs, read by the menu
/// and by the operations themselves. Long operations yield to the event loop and there are no locks; these
/// stand in their place.
struct BusyFlags {
  bool polling_on = false;      ///< the protocol test polls the network
  bool downloading_on = false;  ///< an access list or schedules go to a reader
  bool uploading_on = false;    ///< an access list, a log or collected records come from a reader
};
