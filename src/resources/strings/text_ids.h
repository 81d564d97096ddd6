#pragma once

// The names of the texts in the string table (string_table.cpp). Code asks
// for a text by its name, ResString(txt::Error, language); the number is the
// English id, the Chinese text is the same id + 1000. Grouped as the table is.
// The namespace is `txt` because `text` is already a function in the
// command line and the tests.

namespace zr310::txt {

// Menu bar: menus and their commands.
inline constexpr int MenuFile = 1000;
inline constexpr int MenuOpen = 1001;
inline constexpr int MenuSave = 1002;
inline constexpr int MenuSaveAs = 1003;
inline constexpr int MenuPrint = 1004;
inline constexpr int MenuExit = 1005;
inline constexpr int MenuEdit = 1006;
inline constexpr int MenuCopy = 1007;
inline constexpr int MenuPaste = 1008;
inline constexpr int MenuProgram = 1009;
inline constexpr int MenuRead = 1010;
inline constexpr int MenuWrite = 1011;
inline constexpr int MenuTestMode = 1012;
inline constexpr int MenuOptionWindow = 1013;
inline constexpr int MenuChannelWindow = 1014;
inline constexpr int MenuRadioInformation = 1015;
inline constexpr int MenuSetup = 1016;
inline constexpr int MenuCommunicationPort = 1017;
inline constexpr int MenuLanguage = 1018;
inline constexpr int MenuEnglish = 1019;
inline constexpr int MenuChinese = 1020;
inline constexpr int MenuHelp = 1021;
inline constexpr int MenuHelpContent = 1022;
inline constexpr int MenuHelpIndex = 1023;
inline constexpr int MenuAbout = 1024;
inline constexpr int MenuUndo = 1025;
inline constexpr int MenuRedo = 1026;
inline constexpr int MenuPrintPreview = 1027;
inline constexpr int MenuExportPdf = 1028;
inline constexpr int MenuImportCsv = 1029;
inline constexpr int MenuExportCsv = 1030;
inline constexpr int MenuBackupFolder = 1139;
inline constexpr int MenuCompareWith = 1145;
inline constexpr int MenuVerifyAfterWrite = 1152;
inline constexpr int MenuSerialTrace = 1153; // also the caption of the trace file dialog

// Tool bar buttons.
inline constexpr int ToolOpen = 1050;
inline constexpr int ToolSave = 1051;
inline constexpr int ToolPrint = 1052;
inline constexpr int ToolRead = 1053;
inline constexpr int ToolWrite = 1054;
inline constexpr int ToolSelectPort = 1055; // also the port dialog's frame

// Common words and buttons.
inline constexpr int On = 1100;
inline constexpr int Off = 1101;
inline constexpr int OkButton = 1102;
inline constexpr int CancelButton = 1103;
inline constexpr int Error = 1104;
inline constexpr int None = 1105;
inline constexpr int Warning = 1121;

// Files, clipboard, printing, CSV and backups.
inline constexpr int DataFileFilter = 1122;
inline constexpr int SaveChangesQuestion = 1123;
inline constexpr int IncorrectFileType = 1124;
inline constexpr int SaveFileName = 1126;
inline constexpr int PasteBadCell = 1127;         // %1 row, %2 channel, %3 text, %4 column
inline constexpr int PasteNotChannelRow = 1128;   // %1 line
inline constexpr int PasteTooManyChannels = 1129; // %1 count, %2 first, %3 room
inline constexpr int PasteNoChannels = 1130;
inline constexpr int NoDefaultPrinter = 1131;
inline constexpr int PdfFileFilter = 1132;
inline constexpr int ExportPdfCaption = 1133;
inline constexpr int ReportNotPrinted = 1134;
inline constexpr int CsvFileFilter = 1135;
inline constexpr int ImportCsvCaption = 1136;
inline constexpr int ExportCsvCaption = 1137;
inline constexpr int CsvNotImported = 1138;
inline constexpr int BackupSaved = 1141;
inline constexpr int BackupFailed = 1142;
inline constexpr int ReadPutBack = 1143;
inline constexpr int BackupFolderFailed = 1144;

// Checks before writing, compare and verify.
inline constexpr int CheckBeforeWriting = 1146;
inline constexpr int CheckFoundProblems = 1147;
inline constexpr int WriteAnywayButton = 1148;
inline constexpr int NoDifferences = 1149;
inline constexpr int VerifyFailed = 1150; // %1 first address, %2 differing bytes
inline constexpr int VerifyNotRead = 1151;
inline constexpr int TraceRefused = 1154;

// Serial ports: why one cannot be used, and finding the radio.
inline constexpr int NoSuchPort = 1155;    // %1 port
inline constexpr int PortInUse = 1156;     // %1 port
inline constexpr int JoinPortGroup = 1157; // %1 group
inline constexpr int PortNotOpened = 1158; // %1 port, %2 reason
inline constexpr int Version10NeedsYes = 1159;
inline constexpr int PortNotAllowed = 1160; // %1 port
inline constexpr int NotSerialPort = 1161;  // %1 port
inline constexpr int FindRadio = 1162;
inline constexpr int NoRadioFound = 1163;
inline constexpr int RadioFound = 1164;  // %1 port
inline constexpr int RadiosFound = 1165; // %1 ports, %2 the chosen one
inline constexpr int FindingRadio = 1166;

// The port list of the command line: headings, then what each port answered.
inline constexpr int PortsHeadingPort = 1167;
inline constexpr int PortsHeadingDescription = 1168;
inline constexpr int PortsHeadingManufacturer = 1169;
inline constexpr int PortsHeadingVidPid = 1170;
inline constexpr int PortsHeadingSerialNumber = 1171;
inline constexpr int PortsHeadingRadio = 1172;
inline constexpr int ProbeCurrent = 1173;
inline constexpr int ProbeVersion10 = 1174;
inline constexpr int ProbeNoAnswer = 1175;
inline constexpr int ProbeInUse = 1176;
inline constexpr int ProbeNotAllowed = 1177;
inline constexpr int ProbeNotSerialPort = 1178;
inline constexpr int ProbeNoSuchPort = 1179;
inline constexpr int ProbeCannotOpen = 1180;
inline constexpr int ProbeIncompleteAnswer = 1181;

// Cancelled transfers.
inline constexpr int ReadCancelled = 1182;
inline constexpr int WriteCancelled = 1183;
inline constexpr int TuningCancelled = 1184;

// Channel grid: captions, column headings and cell words.
inline constexpr int ChannelSetting = 1200;
inline constexpr int Close = 1201; // the channel is closed
inline constexpr int NoTx = 1202;
inline constexpr int Channel = 1203; // "CH"; the columns follow in order
inline constexpr int RxFreq = 1204;
inline constexpr int RxTone = 1205;
inline constexpr int TxFreq = 1206;
inline constexpr int TxTone = 1207;
inline constexpr int ScanDelAdd = 1208;
inline constexpr int BusyLock = 1209;
inline constexpr int TxPower = 1210;
inline constexpr int WideNarrow = 1211;
inline constexpr int Simplex = 1212;
inline constexpr int Low = 1213;
inline constexpr int High = 1214;
inline constexpr int Narrow = 1215;
inline constexpr int Wide = 1216;
inline constexpr int Del = 1217;
inline constexpr int Add = 1218;
inline constexpr int Step = 1225;

// Signalling (CTCSS/DCS) dialog.
inline constexpr int SignallingSetting = 1219;
inline constexpr int DcsInvert = 1220;
inline constexpr int CtcDcsSignalling = 1226;

// Model information and the optional features.
inline constexpr int ModelInformation = 1300;
inline constexpr int ModelType = 1301;
inline constexpr int FrequencyBand = 1302;
inline constexpr int OptionalFeatures = 1303;
inline constexpr int TimeOutTimer = 1304;
inline constexpr int TotPreAlert = 1305;
inline constexpr int TotRekeyTime = 1306;
inline constexpr int TotResetTime = 1307;
inline constexpr int Beep = 1308;
inline constexpr int SquelchLevel = 1309;
inline constexpr int HandModel = 1310; // "Manual"
inline constexpr int BatterySave = 1311;
inline constexpr int ScanMode = 1312;
inline constexpr int PriorityChannel = 1313;
inline constexpr int LookBackPeriod = 1314;
inline constexpr int RevertChannel = 1315;
inline constexpr int ScanDelay = 1316;
inline constexpr int Monitor = 1317;
inline constexpr int PowerSelect = 1318;

// Option values.
inline constexpr int Seconds = 1350;
inline constexpr int Infinity = 1351;
inline constexpr int Carrier = 1352;
inline constexpr int Time = 1353;
inline constexpr int RecentRxChannel = 1354;
inline constexpr int RecentUsedChannel = 1355;
inline constexpr int FirstScanChannel = 1356;
inline constexpr int ShortHitMoni = 1357;
inline constexpr int LongHitMoni = 1358;
inline constexpr int MonitorOff = 1359;
inline constexpr int UnmuteMomentary = 1360;
inline constexpr int UnmuteToggle = 1361;
inline constexpr int SquelchMomentary = 1362;

// Radio information, About and the port dialog.
inline constexpr int RadioId = 1400;
inline constexpr int RecentWriteDate = 1401;
inline constexpr int CloseButton = 1402;
inline constexpr int FontButton = 1403;
inline constexpr int ProgramTitle = 1406; // "ZR-310 PC Programming Software"
inline constexpr int Version = 1407;
inline constexpr int RadioInformation = 1409;
inline constexpr int ReadButton = 1410;
inline constexpr int WriteButton = 1411;
inline constexpr int CommunicationPort = 1412;

// Tuning: the tree's nodes, the tuning channel and its frame.
inline constexpr int TuningAdjustFrequency = 1500;
inline constexpr int TuningAllItems = 1501;
inline constexpr int TuningLowBattery = 1502; // the five items follow in order
inline constexpr int TuningSquelch9 = 1503;
inline constexpr int TuningSquelch3 = 1504;
inline constexpr int TuningCtcssDeviation = 1505;
inline constexpr int TuningCdcssDeviation = 1506;
inline constexpr int TuningExit = 1507;
inline constexpr int AdjustChannel = 1508;
inline constexpr int TuningValue = 1509;
inline constexpr int WriteTestFrequencyButton = 1510;

// Transfers with the radio: progress captions, results and failures.
inline constexpr int Read = 1520;
inline constexpr int Write = 1521;
inline constexpr int ReadWriteRadio = 1522;
inline constexpr int ReadingData = 1524;
inline constexpr int WritingData = 1525;
inline constexpr int EnteringTuningMode = 1526;
inline constexpr int WritingTuningData = 1527;
inline constexpr int ReadFinished = 1528;  // "Reading completed", a caption
inline constexpr int WriteFinished = 1529; // "Writing completed", a caption
inline constexpr int ReadCompleted = 1530; // "... press Enter to continue"
inline constexpr int WriteCompleted = 1531;
inline constexpr int TuningError = 1532;
inline constexpr int CommunicationError = 1533;
inline constexpr int ReadInterrupted = 1534;
inline constexpr int WriteInterrupted = 1535;
inline constexpr int TuningInterrupted = 1536;
inline constexpr int PortHasNoResponse = 1537;
inline constexpr int ReadVersion10 = 1538;
inline constexpr int Version10Warning = 1539;
inline constexpr int DontShowNextTime = 1540;

} // namespace zr310::txt
