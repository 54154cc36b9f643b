/*
 * Resource ids shared by the resource script, the code and the tests.  Ranges:
 * icons and bitmaps 100-109 and 123-129, dialogs 110-122, menus 140-149,
 * strings 1 and 1001-1099 (a control's tool tip has the control's number),
 * controls 1001-1199.  A control id is unique within its dialog, and each
 * control has one name; the labels 1040 and 1041 and the controls 1087 and
 * 1088 stand in several dialogs, each under its own dialog's name.
 */
#ifndef QLR_RESOURCE_H
#define QLR_RESOURCE_H

#define IDS_MAIN_PAPER_TRAY     1

#define IDI_PORTRAIT            102
#define IDI_LANDSCAPE           103
#define IDI_PRODUCT             123
#define IDB_LOGO                124

#define IDD_FORMAT_PAGE         110
#define IDD_PAGE_SETUP          111
#define IDD_ABOUT_BOX           112
#define IDD_ABOUT_PAGE          113
#define IDD_OUTPUT_PAGE         114
#define IDD_BMP_PANEL           115     /* the panels are 115 + iOutputFormat */
#define IDD_GIF_PANEL           116
#define IDD_JPEG_PANEL          117
#define IDD_TIFF_PANEL          118
#define IDD_PCX_PANEL           119
#define IDD_DCX_PANEL           120
#define IDD_SAVE_PROFILE        121
#define IDD_PROFILE_MANAGER     122

#define IDM_MACROS              140
#define IDM_MACRO_FIRST         40001   /* + the macro's row in the macro table */
#define IDM_MACRO_LAST          (IDM_MACRO_FIRST + 10)

/* The profile row every page carries. */
#define IDC_PROFILE_COMBO       1001
#define IDC_SAVE_PROFILE        1002
#define IDC_PROFILE_MANAGER     1003
#define IDC_ABOUT               1004
#define IDC_RESTORE_PROFILE     1005
#define IDC_HELP_BUTTON         1017

/* Page setup. */
#define IDC_PREVIEW             1006
#define IDC_PAPER_LIST          1007
#define IDC_PORTRAIT            1008
#define IDC_LANDSCAPE           1009
#define IDC_PORTRAIT_ICON       1010
#define IDC_LANDSCAPE_ICON      1011
#define IDC_RESOLUTION          1012
#define IDC_CROP                1013
#define IDC_UNIT_LIST           1014
#define IDC_SIZE_LABEL          1016
#define IDC_BY_LABEL            1040
#define IDC_IN_LABEL            1041
#define IDC_STANDARD_PAPER      1096
#define IDC_CUSTOM_PAPER        1097
#define IDC_CUSTOM_WIDTH        1098
#define IDC_CUSTOM_HEIGHT       1099
#define IDC_SIZE_GROUP          1100
#define IDC_ORIENTATION_GROUP   1101

/* Output format. */
#define IDC_FORMAT_LIST         1020
#define IDC_PANEL_PLACE         1039
#define IDC_FORMAT_LABEL        1102

/* The format panels. */
#define IDC_DEPTH_1             1021
#define IDC_DEPTH_4             1022
#define IDC_DEPTH_8             1023
#define IDC_DEPTH_16            1024
#define IDC_DEPTH_24            1025
#define IDC_DEPTH_32            1026
#define IDC_INTERLACED          1027
#define IDC_MULTIPAGE           1028
#define IDC_DITHER              1029
#define IDC_GRAYSCALE           1030
#define IDC_SUBSAMPLING_1       1031
#define IDC_SUBSAMPLING_2       1032
#define IDC_SUBSAMPLING_4       1033
#define IDC_COLORS              1035
#define IDC_COLORS_SPIN         1036
#define IDC_QUALITY             1037
#define IDC_QUALITY_SPIN        1038
#define IDC_QUALITY_LABEL       1040
#define IDC_PERCENT_LABEL       1041
#define IDC_COMPRESSION_NONE    1042    /* + compression code, 0 to 6 */
#define IDC_COMPRESSION_RLE     1043
#define IDC_COMPRESSION_FAX3    1044
#define IDC_COMPRESSION_FAX4    1045
#define IDC_COMPRESSION_LZW     1046
#define IDC_COMPRESSION_JPEG    1047
#define IDC_COMPRESSION_PACKBIT 1048

/* Output. */
#define IDC_OUTPUT_FOLDER       1050
#define IDC_BROWSE_FOLDER       1051
#define IDC_FILE_MASK           1052
#define IDC_MACRO               1053
#define IDC_SHOW_RESULT         1054
#define IDC_VIEWER_PATH         1055
#define IDC_BROWSE_VIEWER       1056
#define IDC_EXAMPLE_NAME        1057
#define IDC_DEFAULT_VIEWER      1058
#define IDC_CUSTOM_VIEWER       1059
#define IDC_VIEWER_PARAMS       1060
#define IDC_APP_DESC_LABEL      1087
#define IDC_APP_DESC            1088
#define IDC_APP_VERSION_LABEL   1089
#define IDC_APP_VERSION         1090
#define IDC_APP_COPYRIGHT_LABEL 1091
#define IDC_APP_COPYRIGHT       1092
#define IDC_APP_ICON            1093
#define IDC_PARAMS_LABEL        1095

/* Save profile and the profile manager. */
#define IDC_PROFILE_NAME        1081
#define IDC_PROFILE_COMMENT     1082
#define IDC_PROFILE_LIST        1083
#define IDC_DELETE_PROFILE      1086
#define IDC_IMPORT_PROFILE      1087
#define IDC_EXPORT_PROFILE      1088
#define IDC_NAME_LABEL          1040
#define IDC_COMMENT_LABEL       1041

#endif
