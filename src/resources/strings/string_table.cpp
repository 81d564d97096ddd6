#include "string_table.h"

#include <algorithm>
#include <array>

namespace zr310 {

int gbytLang = 0;

namespace {

struct StringRow {
    int id;
    std::string_view english;
    std::string_view chinese;
};

// Sorted by id. "\r\r\n" is stored as it stands (CR CR LF), and doubled
// quotation marks are two quotation-mark characters.
constexpr StringRow kStrings[] = {
    {1000, "&File", "文件(&F)"},
    {1001, "&Open...", "打开...(&O)"},
    {1002, "&Save", "保存(&S)"},
    {1003, "Save &As...", "另存为...(&A)"},
    {1004, "&Print...", "打印...(&P)"},
    {1005, "&Exit", "退出(&E)"},
    {1006, "&Edit", "编辑(&E)"},
    {1007, "&Copy", "复制(&C)"},
    {1008, "&Paste", "粘贴(&P)"},
    {1009, "&Program", "编程(&P)"},
    {1010, "&Read", "读频(&R)"},
    {1011, "&Write", "写频(&W)"},
    {1012, "&Test Mode", "调试(&T)"},
    {1013, "&Option Window", "设置窗口(&O)"},
    {1014, "&Channel Window", "信道窗口(&C)"},
    {1015, "&Radio Information", "对讲机信息(&R)"},
    {1016, "&Setup", "设置(&S)"},
    {1017, "&Communication Port", "通信端口(&C)"},
    {1018, "Language", "语言"},
    {1019, "&English", "英语(&E)"},
    {1020, "&Chinese", "中文(&C)"},
    {1021, "&Help", "帮助(&H)"},
    {1022, "Help &Content", "帮助内容(&C)"},
    {1023, "Help &Index...", "帮助索引...(&I)"},
    {1024, "&About...", "关于...(&A)"},
    {1025, "&Undo", "撤销(&U)"},
    {1026, "&Redo", "重做(&R)"},
    {1027, "Print Pre&view...", "打印预览...(&V)"},
    {1028, "Export P&DF...", "导出PDF...(&D)"},
    {1029, "&Import CSV...", "导入CSV...(&I)"},
    {1030, "E&xport CSV...", "导出CSV...(&X)"},
    {1050, "Open", "打开"},
    {1051, "Save", "保存"},
    {1052, "Print", "打印"},
    {1053, "Read", "读频"},
    {1054, "Write", "写频"},
    {1055, "Select Port", "端口选择"},
    {1100, "On", "打开"},
    {1101, "Off", "关闭"},
    {1102, "&OK", "确定(&O)"},
    {1103, "&Cancel", "取消(&C)"},
    {1104, "Error", "错误"},
    {1105, "None", "无"},
    {1120, "File Name", "文件名"},
    {1121, "Warning", "警告"},
    {1122, "Data Files (*.k720)|*.k720", "数据文件 (*.k720)|*.k720"},
    {1123, "Data hasn't been saved, save it now?", "数据还没有保存，您需要保存数据吗？\r\n"},
    {1124, "Incorrect File Type.", "文件类型不正确。"},
    {1125, "Modify warning!", "改写警告！"},
    {1126, "Save filename", "保存文件名"},
    {1127, "Row %1 cannot be pasted onto CH %2: \"%3\" is not a valid %4.",
     "第%1行不能粘贴到信道%2：“%3”不是有效的%4。"},
    {1128, "Line %1 of the pasted text is not a channel row.", "粘贴文本的第%1行不是信道数据。"},
    {1129, "The clipboard holds %1 channels: from CH %2 only %3 fit.",
     "剪贴板中有%1个信道：从信道%2起只能放下%3个。"},
    {1130, "The clipboard holds no channels.", "剪贴板中没有信道数据。"},
    {1131, "There is no default printer. Set up a printer as the default, or use Export PDF.",
     "没有默认打印机。请先设置默认打印机，或者使用“导出PDF”。"},
    {1132, "PDF Files (*.pdf)", "PDF文件 (*.pdf)"},
    {1133, "Export PDF", "导出PDF"},
    {1134, "The report could not be printed.", "报告无法打印。"},
    {1135, "CSV Files (*.csv)", "CSV文件 (*.csv)"},
    {1136, "Import CSV", "导入CSV"},
    {1137, "Export CSV", "导出CSV"},
    {1138, "The channels were not imported:", "信道未导入："},
    {1200, "Channel Setting", "信道设置"},
    {1201, "Close", "关闭"},
    {1202, "No TX", "禁发"},
    {1203, "CH", "信道"},
    {1204, "RX Freq (MHz)", "接收频率(MHz)"},
    {1205, "RX CTC/DCS", "接收CTC/DCS"},
    {1206, "TX Freq (MHz)", "发射频率(MHz)"},
    {1207, "TX CTC/DCS", "发射CTC/DCS"},
    {1208, "Scan Del/Add", "扫描删除/添加"},
    {1209, "Busy Lock", "繁忙锁定"},
    {1210, "TX Power", "发射功率"},
    {1211, "W/N", "宽/窄带"},
    {1212, "Simplex", "同频"},
    {1213, "Low", "低"},
    {1214, "High", "高"},
    {1215, "Narrow", "窄带"},
    {1216, "Wide", "宽带"},
    {1217, "Del", "删除"},
    {1218, "Add", "添加"},
    {1219, "Signalling Setting", "信令设置"},
    {1220, "DCS Invert", "DCS 反向"},
    {1221, "Receive", "接收"},
    {1222, "Transmit", "发射"},
    {1223, "blank", "为空"},
    {1224, "Locked", "锁定"},
    {1225, " Step (KHz)", "步进值(KHz)"},
    {1226, "CTC/DCS Signalling", "CTC/DCS信令"},
    {1300, "Model Information", "机型信息"},
    {1301, "Type", "型号"},
    {1302, "Frequency Band", "频率范围"},
    {1303, "Optional Features", "整机功能"},
    {1304, "Time Out Timer", "发射限时"},
    {1305, "TOT Pre-Alert", "预告警时间"},
    {1306, "TOT Rekey Time", "TOT再键时间"},
    {1307, "TOT Reset Time", "TOT复位时间"},
    {1308, "Beep", "提示音"},
    {1309, "Sq Level", "静噪等级"},
    {1310, "Manual", "手动模式"},
    {1311, "Batt Save", "省电功能"},
    {1312, "Scan Mode", "扫描模式"},
    {1313, "Priority Ch", "优先信道"},
    {1314, "LB Period", "回扫周期"},
    {1315, "Revert Ch", "恢复信道"},
    {1316, "Scan Delay", "扫描停留时间"},
    {1317, "Moni", "监听"},
    {1318, "Power Sel", "功率选择"},
    {1350, "sec", "秒"},
    {1351, "Infinity", "无限制"},
    {1352, "Carrier", "载波"},
    {1353, "Time", "时间"},
    {1354, "Recent Rx Ch", "最近接收呼叫信道"},
    {1355, "Recent Used Ch", "最近使用信道"},
    {1356, "1st Scan Ch", "第一扫描信道"},
    {1357, "Short-hit [Moni]", "短按[Moni]键"},
    {1358, "Long-hit [Moni]", "长按[Moni]键"},
    {1359, "Off", "关闭监听功能"},
    {1360, "Unmute Momentary", "暂态无条件监听"},
    {1361, "Unmute Toggle", "稳态无条件监听"},
    {1362, "Squelch Momentary", "暂态有条件监听"},
    {1363, "Scan Information", "扫描信息"},
    {1364, "And", "和"},
    {1400, "Radio ID", "对讲机 ID"},
    {1401, "Recent Write Date", "最近写频日期"},
    {1402, "&Close", "关闭(&C)"},
    {1403, "&Font", "字体(&F)"},
    {1404, "Exceed the maximum input length!", "超出文本最大输入限度！"},
    {1405, "Communication Port", "通信端口"},
    {1406, "ZR-310 PC Programming Software", "ZR-310 PC编程软件"},
    {1407, "Version", "版本"},
    {1409, "Radio Information", "对讲机信息"},
    {1410, "&Read", "读取(&R)"},
    {1411, "&Write", "写入(&W)"},
    {1412, "Communication Port", "通信端口"},
    {1500, "Adjust frequency setting", "调整频率设置"},
    {1501, "All Tuning Item", "各调整项"},
    {1502, "Low Battery Level", "电池低压电平"},
    {1503, "9th Squelch Level", "第9级静噪电平"},
    {1504, "3rd Squelch Level", "第3级静噪电平"},
    {1505, "CTCSS Deviation", "CTCSS频偏"},
    {1506, "CDCSS Deviation", "CDCSS频偏"},
    {1507, "Exit tuning", "退出调整"},
    {1508, "Adjust Ch", "调整信道"},
    {1509, "Tuning Value", "调整值"},
    {1510, "&Write Test Frequency", "写入调试频率(&W)"},
    {1520, "Read", "读频"},
    {1521, "Write", "写频"},
    {1522, "Read/Write Radio", "读取/写入对讲机"},
    {1523, "Enter Tuning Mode", "进入调整模式"},
    {1524, "Reading data from radio...", "正在从对讲机中读取数据..."},
    {1525, "Writing data to radio...", "正在向对讲机中写入数据..."},
    {1526, "Please wait for entering tuning mode.", "正在进入对讲机调整模式，请稍等。"},
    {1527, "Writing tuning data to radio.", "正在向对讲机中写入调试数据。"},
    {1528, "Reading completed", "读频完成"},
    {1529, "Writing completed", "写频完成"},
    {1530, "Reading completed, press \"\"Enter\"\" to continue...", "读频完成，按\"\"确定\"\"继续..."},
    {1531, "Writing completed, press \"\"Enter\"\" to continue...", "写频完成，按\"\"确定\"\"继续..."},
    {1532, "Tuning\terror", "调整错误"},
    {1533, "Communication Error", "通讯错误"},
    {1534, "Please read again because of interruption!", "读频被中断，请重新读频！"},
    {1535, "Please Write again because of interruption!", "写频被中断，请重新写频！"},
    {1536, "Please enter again because of interruption!", "连接断开，请重新进入！"},
    {1537, "Port has no response, please check connection \r\r\nand Power!", "端口没有响应，请确保连接正确或及其电源是否打开！"},
    {1538, "Reading completed,, the radio's version is 1.0, some function \r\r\ncan't be used, refer to help file for details!", "读频完成，该机为V1.0版，某些功能无效，详情请查看帮助文件！"},
    {1539, "The radio's version that is going to be Writed \r\r\nis 1.0, some function can't be used, refer to help file \r\r\nfor details! Do you wish to continue?", "当前要写频的机器为V1.0版，某些功能无效，详情请查看帮助文件！是否继续？"},
    {1540, "Don't show next time(Appear after restart)", "下次不再提示（下次重启软件时再跳出提示框）"},};

const StringRow* findRow(int id) {
    const auto* end = std::end(kStrings);
    const auto* row = std::lower_bound(std::begin(kStrings), end, id,
                                       [](const StringRow& r, int key) { return r.id < key; });
    return row != end && row->id == id ? row : nullptr;
}

} // namespace

Language currentLanguage() { return gbytLang == 1 ? Language::Chinese : Language::English; }

std::string_view ResString(int id, Language language) {
    const StringRow* row = findRow(id);
    if (!row)
        return {};
    return language == Language::Chinese ? row->chinese : row->english;
}

std::string ResString(int id) { return std::string(ResString(id, currentLanguage())); }

bool hasResString(int id) { return findRow(id) != nullptr; }

} // namespace zr310
