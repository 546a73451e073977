<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>السرعة:</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>البيانات:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>مدة الاتصال:</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>المرسل:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>المستلم:</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>النقل</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>(جوال)</translation>
    </message>
    <message>
        <source>IDS_WLAN_TRANSFER</source>
        <translation>(واي فاي)</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>الإرسال</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>الاستلام</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>الإحصاءات</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>آخر تصفير:</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>هذا الشهر</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>هذه السنة</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>الأرقام تقديرية؛ والمعتمد هو فاتورة المشغّل.</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>تصفير الإحصاءات</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>توسيع الكل</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>طي الكل</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>تأكيد</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>هل تريد تصفير كل الإحصاءات المحفوظة؟ لا يمكن التراجع عن ذلك.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>نعم</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>لا</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>استخدام البيانات</translation>
    </message>
    <message>
        <source>IDS_UNIT_B</source>
        <translation>بايت</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>ك.ب</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>م.ب</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>ج.ب</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>ت.ب</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>بايت/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>ك.ب/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>م.ب/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>ج.ب/ث</translation>
    </message>
    <message>
        <source>IDS_UNIT_TBPS</source>
        <translation>ت.ب/ث</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>البيانات المستخدمة:</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>الوقت المستخدم:</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>الأرقام تقديرية؛ والمعتمد هو فاتورة المشغّل.</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>تصفير</translation>
    </message>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>تعيين حد…</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>ساعة</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>لقد أوشكت على استهلاك حجم بياناتك لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>لقد استهلكت حجم بياناتك لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>لقد أوشكت على استهلاك وقت اتصالك لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>لقد استهلكت وقت اتصالك لهذه الفترة.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>تنبيه الاستخدام</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>موافق</translation>
    </message>
    <message>
        <source>IDS_DISCONNECT_BUTTON</source>
        <translation>قطع الاتصال</translation>
    </message>
    <message>
        <source>IDS_SAVESETTING</source>
        <translation>حفظ</translation>
    </message>
    <message>
        <source>IDS_CLEAR_BUTTON</source>
        <translation>مسح السجل</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>التكرار</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>يوميًا</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>أسبوعيًا</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>شهريًا</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>الاثنين</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>الثلاثاء</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>الأربعاء</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>الخميس</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>الجمعة</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>السبت</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>الأحد</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>الحد</translation>
    </message>
    <message>
        <source>IDS_UNIT_DATA_VOLUME_MB</source>
        <translation>م.ب</translation>
    </message>
    <message>
        <source>IDS_SAVE_FAILED</source>
        <translation>تعذّر حفظ الإعدادات.</translation>
    </message>
    <message>
        <source>IDS_CHANGED_SAVE</source>
        <translation>تم حفظ الإعدادات.</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>تنبيه</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>السرعة بوحدة </translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>سرعة الإرسال</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>سرعة الاستلام</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>الفترة</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>التنبيهات</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>يُقاس الاستخدام على هذا الحاسوب، وقد يحسب المشغّل بطريقة مختلفة.</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>تاريخ البدء:</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>متكرر</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>البيانات</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>الوقت</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>التنبيه قبل بلوغ الحد</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>التنبيه عند تجاوز الحد</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>يرجى إدخال حد البيانات.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>يرجى إدخال حد الوقت.</translation>
    </message>
</context>
<context>
    <name>skylet</name>
    <message>
        <source>HOST_TITLE</source>
        <translation>Skylet</translation>
    </message>
    <message>
        <source>HOST_MENU_FILE</source>
        <translation>&amp;ملف</translation>
    </message>
    <message>
        <source>HOST_MENU_VIEW</source>
        <translation>&amp;عرض</translation>
    </message>
    <message>
        <source>HOST_MENU_LANGUAGE</source>
        <translation>الل&amp;غة</translation>
    </message>
    <message>
        <source>HOST_QUIT</source>
        <translation>إ&amp;نهاء</translation>
    </message>
    <message>
        <source>HOST_SETTINGS</source>
        <translation>الإ&amp;عدادات…</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_TITLE</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_PAGES</source>
        <translation>صفحات الإعدادات</translation>
    </message>
    <message>
        <source>HOST_OK</source>
        <translation>م&amp;وافق</translation>
    </message>
    <message>
        <source>HOST_CANCEL</source>
        <translation>إلغ&amp;اء</translation>
    </message>
    <message>
        <source>HOST_MENU_DEVICE</source>
        <translation>ال&amp;جهاز</translation>
    </message>
    <message>
        <source>HOST_DEVICE_AUTOMATIC</source>
        <translation>&amp;تلقائي</translation>
    </message>
    <message>
        <source>HOST_DEVICE_ABSENT</source>
        <translation>%1 (غير موجود)</translation>
    </message>
    <message>
        <source>HOST_DEVICE_REFUSED</source>
        <translation>لا يمكن اختيار الجهاز الآن: برنامج آخر يقوم بالعدّ.</translation>
    </message>
    <message>
        <source>HOST_CONNECT</source>
        <translation>ا&amp;تصال</translation>
    </message>
    <message>
        <source>HOST_CONNECTING</source>
        <translation>جارٍ الاتصال…</translation>
    </message>
    <message>
        <source>HOST_CONNECT_FAILED</source>
        <translation>تعذّر الاتصال: أبلغ NetworkManager عن خطأ أو لم يستجب في الوقت المناسب.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_DEVICE</source>
        <translation>لا يوجد جهاز يمكنه الاتصال.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_SERVICE</source>
        <translation>لا يمكن الاتصال: NetworkManager لا يعمل.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NOT_MANAGED</source>
        <translation>لا يمكن الاتصال: NetworkManager لا يدير الجهاز.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_REFUSED</source>
        <translation>لا يمكن الاتصال: ليس لديك الإذن بذلك.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_PROFILE</source>
        <translation>لا يمكن الاتصال: لا توجد في NetworkManager شبكة مُعدّة لهذا الجهاز.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT</source>
        <translation>&amp;قطع الاتصال</translation>
    </message>
    <message>
        <source>HOST_DISCONNECTING</source>
        <translation>جارٍ قطع الاتصال…</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_DONE</source>
        <translation>تم قطع الاتصال.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_CONNECTION</source>
        <translation>لا يوجد اتصال لقطعه.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_SERVICE</source>
        <translation>لا يمكن قطع الاتصال: NetworkManager لا يعمل.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NOT_MANAGED</source>
        <translation>لا يمكن قطع الاتصال: NetworkManager لا يدير هذا الاتصال.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_REFUSED</source>
        <translation>لا يمكن قطع الاتصال: ليس لديك إذن بذلك.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_FAILED</source>
        <translation>تعذّر قطع الاتصال: أبلغ NetworkManager عن خطأ أو لم يستجب.</translation>
    </message>
    <message>
        <source>HOST_VIEW_USAGE</source>
        <translation>الاستخ&amp;دام</translation>
    </message>
    <message>
        <source>HOST_VIEW_STATISTICS</source>
        <translation>الإ&amp;حصاءات</translation>
    </message>
    <message>
        <source>HOST_VIEWS</source>
        <translation>العروض</translation>
    </message>
    <message>
        <source>HOST_PAGE</source>
        <translation>صفحة الإضافة</translation>
    </message>
    <message>
        <source>HOST_MESSAGES</source>
        <translation>الرسائل</translation>
    </message>
    <message>
        <source>HOST_DISMISS</source>
        <translation>إغ&amp;لاق</translation>
    </message>
    <message>
        <source>HOST_INTERFACE</source>
        <translation>الواجهة</translation>
    </message>
    <message>
        <source>HOST_CONNECTION</source>
        <translation>الاتصال</translation>
    </message>
    <message>
        <source>HOST_STORE</source>
        <translation>التخزين</translation>
    </message>
    <message>
        <source>HOST_NO_INTERFACE</source>
        <translation>لا توجد واجهة</translation>
    </message>
    <message>
        <source>HOST_CONNECTED</source>
        <translation>متصل</translation>
    </message>
    <message>
        <source>HOST_NOT_CONNECTED</source>
        <translation>غير متصل</translation>
    </message>
    <message>
        <source>HOST_DEMO</source>
        <translation>عرض توضيحي</translation>
    </message>
    <message>
        <source>HOST_NO_PLUGIN</source>
        <translation>لم تُحمَّل أي إضافة، فلا شيء لعرضه.</translation>
    </message>
    <message>
        <source>HOST_NO_DATA_FOLDER</source>
        <translation>تعذّر إنشاء مجلد البيانات %1؛ لن يُحفظ شيء.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FAILURE</source>
        <translation>الإضافة %1: %2</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_FOLDER</source>
        <translation>هذا المجلد غير موجود.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOLDER_EMPTY</source>
        <translation>لا يحتوي المجلد على إضافات.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_LIBRARY</source>
        <translation>لا يحتوي المجلد على مكتبة.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_LOADED</source>
        <translation>تعذّر تحميلها: %1</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOREIGN</source>
        <translation>ليست إضافة لهذا البرنامج.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_READABLE</source>
        <translation>الملف فارغ أو تتعذر قراءته.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_WRONG_QT</source>
        <translation>بُنيت لإصدار Qt %1، لكن هذا البرنامج يستخدم Qt %2.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_TWICE</source>
        <translation>معرّفها مستخدم من قِبل %1.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_STARTED</source>
        <translation>لم تبدأ العمل.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_STATISTICS</source>
        <translation>ليس لها صفحة إحصاءات.</translation>
    </message>
</context>
</TS>
