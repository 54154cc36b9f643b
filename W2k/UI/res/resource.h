/*
 * Resource ids shared by the resource script and the code.  Ranges: strings
 * 1 and 1001-1099, dialogs 110-139, menus 140-149, icons and bitmaps 100-109
 * and 120-129.
 */
#ifndef QLR_RESOURCE_H
#define QLR_RESOURCE_H

#define IDS_MAIN_PAPER_TRAY   1

#endif
