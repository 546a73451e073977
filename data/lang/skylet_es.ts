<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>NetInfoUIExPlugin</name>
    <message>
        <source>IDS_TREE_SPEED</source>
        <translation>Velocidad:</translation>
    </message>
    <message>
        <source>IDS_TREE_DATA</source>
        <translation>Datos:</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_TRANSFER</source>
        <translation>Tiempo de conexión:</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOADED_DATA</source>
        <translation>Enviado:</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOADED_DATA</source>
        <translation>Recibido:</translation>
    </message>
    <message>
        <source>IDS_TREE_TRANSFER</source>
        <translation>Transferencia</translation>
    </message>
    <message>
        <source>IDS_DIALUP_TRANSFER</source>
        <translation>(móvil)</translation>
    </message>
    <message>
        <source>IDS_WLAN_TRANSFER</source>
        <translation>(Wi-Fi)</translation>
    </message>
    <message>
        <source>IDS_TREE_UPLOAD</source>
        <translation>Envío</translation>
    </message>
    <message>
        <source>IDS_TREE_DOWNLOAD</source>
        <translation>Recepción</translation>
    </message>
    <message>
        <source>IDS_TREE_STATISTICS</source>
        <translation>Estadísticas</translation>
    </message>
    <message>
        <source>IDS_TREE_TIME_LASTRESET</source>
        <translation>Último restablecimiento:</translation>
    </message>
    <message>
        <source>IDS_TREE_DAILY</source>
        <translation>Hoy</translation>
    </message>
    <message>
        <source>IDS_TREE_MONTHLY</source>
        <translation>Este mes</translation>
    </message>
    <message>
        <source>IDS_TREE_YEARLY</source>
        <translation>Este año</translation>
    </message>
    <message>
        <source>IDS_NOTES</source>
        <translation>Las cifras son estimaciones; vale la factura de su operador.</translation>
    </message>
    <message>
        <source>IDS_CLEAR_VOLUME</source>
        <translation>Restablecer las estadísticas</translation>
    </message>
    <message>
        <source>IDS_EXPAND_ALL</source>
        <translation>Expandir todo</translation>
    </message>
    <message>
        <source>IDS_COLLAPSE_ALL</source>
        <translation>Contraer todo</translation>
    </message>
    <message>
        <source>IDS_CONFIRM</source>
        <translation>Confirmar</translation>
    </message>
    <message>
        <source>IDS_RESET_QUERY</source>
        <translation>¿Restablecer todas las estadísticas guardadas? No se puede deshacer.</translation>
    </message>
    <message>
        <source>IDS_YES</source>
        <translation>Sí</translation>
    </message>
    <message>
        <source>IDS_NO</source>
        <translation>No</translation>
    </message>
    <message>
        <source>IDS_OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>IDS_SETTING_NAME</source>
        <translation>Consumo de datos</translation>
    </message>
    <message>
        <source>IDS_UNIT_B</source>
        <translation>B</translation>
    </message>
    <message>
        <source>IDS_UNIT_KB</source>
        <translation>KB</translation>
    </message>
    <message>
        <source>IDS_UNIT_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_UNIT_GB</source>
        <translation>GB</translation>
    </message>
    <message>
        <source>IDS_UNIT_TB</source>
        <translation>TB</translation>
    </message>
    <message>
        <source>IDS_UNIT_BPS</source>
        <translation>B/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_KBPS</source>
        <translation>KB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_MBPS</source>
        <translation>MB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_GBPS</source>
        <translation>GB/s</translation>
    </message>
    <message>
        <source>IDS_UNIT_TBPS</source>
        <translation>TB/s</translation>
    </message>
    <message>
        <source>IDS_STA_TOTALVOLUME</source>
        <translation>Datos usados:</translation>
    </message>
    <message>
        <source>IDC_STA_TIMEVOLUME</source>
        <translation>Tiempo usado:</translation>
    </message>
    <message>
        <source>IDC_VOLUMENOTES</source>
        <translation>Las cifras son estimaciones; vale la factura de su operador.</translation>
    </message>
    <message>
        <source>IDS_BTN_RESET</source>
        <translation>Restablecer</translation>
    </message>
    <message>
        <source>IDC_BTN_SETLIMIT</source>
        <translation>Fijar límite…</translation>
    </message>
    <message>
        <source>IDS_UNIT_HOURS</source>
        <translation>horas</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNBEFORE</source>
        <translation>Ha consumido casi todo el volumen de datos de este periodo.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNAFTER</source>
        <translation>Ha consumido todo el volumen de datos de este periodo.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNBEFORE</source>
        <translation>Ha consumido casi todo el tiempo de conexión de este periodo.</translation>
    </message>
    <message>
        <source>IDS_BOX_TIMEWARNAFTER</source>
        <translation>Ha consumido todo el tiempo de conexión de este periodo.</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNTITLE</source>
        <translation>Aviso de consumo</translation>
    </message>
    <message>
        <source>IDS_BOX_WARNIDOK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>IDS_DISCONNECT_BUTTON</source>
        <translation>Desconectar</translation>
    </message>
    <message>
        <source>IDS_SAVESETTING</source>
        <translation>Guardar</translation>
    </message>
    <message>
        <source>IDS_CLEAR_BUTTON</source>
        <translation>Borrar el historial</translation>
    </message>
    <message>
        <source>IDS_GRP_RECURRENCE</source>
        <translation>Periodicidad</translation>
    </message>
    <message>
        <source>IDS_RADIO_DAILY</source>
        <translation>Diaria</translation>
    </message>
    <message>
        <source>IDC_RADIO_WEEKLY</source>
        <translation>Semanal</translation>
    </message>
    <message>
        <source>IDS_RADIO_MONTHLY</source>
        <translation>Mensual</translation>
    </message>
    <message>
        <source>IDS_MONDAY</source>
        <translation>lun.</translation>
    </message>
    <message>
        <source>IDS_TUESDAY</source>
        <translation>mar.</translation>
    </message>
    <message>
        <source>IDS_WEDNESAY</source>
        <translation>mié.</translation>
    </message>
    <message>
        <source>IDS_THURSDAY</source>
        <translation>jue.</translation>
    </message>
    <message>
        <source>IDS_FRIDAY</source>
        <translation>vie.</translation>
    </message>
    <message>
        <source>IDS_SATURDAY</source>
        <translation>sáb.</translation>
    </message>
    <message>
        <source>IDS_SUNDAY</source>
        <translation>dom.</translation>
    </message>
    <message>
        <source>IDS_GRP_SETLIMIT</source>
        <translation>Límite</translation>
    </message>
    <message>
        <source>IDS_UNIT_DATA_VOLUME_MB</source>
        <translation>MB</translation>
    </message>
    <message>
        <source>IDS_SAVE_FAILED</source>
        <translation>No se han podido guardar los ajustes.</translation>
    </message>
    <message>
        <source>IDS_CHANGED_SAVE</source>
        <translation>Los ajustes se han guardado.</translation>
    </message>
    <message>
        <source>IDS_PROPMT</source>
        <translation>Aviso</translation>
    </message>
    <message>
        <source>IDS_TRENDS_SPEED</source>
        <translation>Velocidad en </translation>
    </message>
    <message>
        <source>IDS_TRENDS_UPLOAD_SPEED</source>
        <translation>Velocidad de envío</translation>
    </message>
    <message>
        <source>IDS_TRENDS_DOWNLOAD_SPEED</source>
        <translation>Velocidad de recepción</translation>
    </message>
    <message>
        <source>IDS_GRP_SETPERIOD</source>
        <translation>Periodo</translation>
    </message>
    <message>
        <source>IDS_GRP_SETWARNINGS</source>
        <translation>Avisos</translation>
    </message>
    <message>
        <source>IDS_STAT_MAX</source>
        <translation>El consumo se mide en este equipo. Su operador puede contar de otra forma.</translation>
    </message>
    <message>
        <source>IDS_STA_STARTDATE</source>
        <translation>Inicio:</translation>
    </message>
    <message>
        <source>IDS_CHK_SET</source>
        <translation>Periódico</translation>
    </message>
    <message>
        <source>IDS_CHK_VOLUME</source>
        <translation>Datos</translation>
    </message>
    <message>
        <source>IDS_VOLUME_LIMIT</source>
        <translation>Tiempo</translation>
    </message>
    <message>
        <source>IDS_CHK_BEFORE</source>
        <translation>Avisar antes de alcanzar un límite</translation>
    </message>
    <message>
        <source>IDS_CHK_AFTER</source>
        <translation>Avisar al superar un límite</translation>
    </message>
    <message>
        <source>IDS_INPUT_DATA_VOLUME</source>
        <translation>Introduzca el límite de datos.</translation>
    </message>
    <message>
        <source>IDS_INPUT_TIME_VOLUME_LIMIT</source>
        <translation>Introduzca el límite de tiempo.</translation>
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
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>HOST_MENU_VIEW</source>
        <translation>&amp;Ver</translation>
    </message>
    <message>
        <source>HOST_MENU_LANGUAGE</source>
        <translation>&amp;Idioma</translation>
    </message>
    <message>
        <source>HOST_QUIT</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>HOST_SETTINGS</source>
        <translation>&amp;Configuración…</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_TITLE</source>
        <translation>Configuración</translation>
    </message>
    <message>
        <source>HOST_SETTINGS_PAGES</source>
        <translation>Páginas de configuración</translation>
    </message>
    <message>
        <source>HOST_OK</source>
        <translation>Ace&amp;ptar</translation>
    </message>
    <message>
        <source>HOST_CANCEL</source>
        <translation>Ca&amp;ncelar</translation>
    </message>
    <message>
        <source>HOST_MENU_DEVICE</source>
        <translation>&amp;Dispositivo</translation>
    </message>
    <message>
        <source>HOST_DEVICE_AUTOMATIC</source>
        <translation>&amp;Automático</translation>
    </message>
    <message>
        <source>HOST_DEVICE_ABSENT</source>
        <translation>%1 (no presente)</translation>
    </message>
    <message>
        <source>HOST_DEVICE_REFUSED</source>
        <translation>Ahora no se puede elegir el dispositivo: otro programa está contando.</translation>
    </message>
    <message>
        <source>HOST_CONNECT</source>
        <translation>&amp;Conectar</translation>
    </message>
    <message>
        <source>HOST_CONNECTING</source>
        <translation>Conectando…</translation>
    </message>
    <message>
        <source>HOST_CONNECT_FAILED</source>
        <translation>No se pudo establecer la conexión: NetworkManager notificó un error o no respondió a tiempo.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_DEVICE</source>
        <translation>No hay ningún dispositivo que pueda conectarse.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_SERVICE</source>
        <translation>No se puede establecer la conexión: NetworkManager no está en marcha.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NOT_MANAGED</source>
        <translation>No se puede establecer la conexión: NetworkManager no gestiona el dispositivo.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_REFUSED</source>
        <translation>No se puede establecer la conexión: usted no tiene permiso.</translation>
    </message>
    <message>
        <source>HOST_CONNECT_NO_PROFILE</source>
        <translation>No se puede establecer la conexión: NetworkManager no tiene ninguna conexión configurada para el dispositivo.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT</source>
        <translation>&amp;Desconectar</translation>
    </message>
    <message>
        <source>HOST_DISCONNECTING</source>
        <translation>Desconectando…</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_DONE</source>
        <translation>La conexión se ha cortado.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_CONNECTION</source>
        <translation>No hay ninguna conexión que cortar.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NO_SERVICE</source>
        <translation>No se puede cortar la conexión: NetworkManager no está en ejecución.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_NOT_MANAGED</source>
        <translation>No se puede cortar la conexión: NetworkManager no la gestiona.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_REFUSED</source>
        <translation>No se puede cortar la conexión: no tiene permiso para ello.</translation>
    </message>
    <message>
        <source>HOST_DISCONNECT_FAILED</source>
        <translation>No se ha podido cortar la conexión: NetworkManager ha comunicado un error o no ha respondido.</translation>
    </message>
    <message>
        <source>HOST_VIEW_USAGE</source>
        <translation>&amp;Consumo</translation>
    </message>
    <message>
        <source>HOST_VIEW_STATISTICS</source>
        <translation>&amp;Estadísticas</translation>
    </message>
    <message>
        <source>HOST_VIEWS</source>
        <translation>Vistas</translation>
    </message>
    <message>
        <source>HOST_PAGE</source>
        <translation>Página del complemento</translation>
    </message>
    <message>
        <source>HOST_MESSAGES</source>
        <translation>Mensajes</translation>
    </message>
    <message>
        <source>HOST_DISMISS</source>
        <translation>Ce&amp;rrar</translation>
    </message>
    <message>
        <source>HOST_INTERFACE</source>
        <translation>Interfaz</translation>
    </message>
    <message>
        <source>HOST_CONNECTION</source>
        <translation>Conexión</translation>
    </message>
    <message>
        <source>HOST_STORE</source>
        <translation>Almacén</translation>
    </message>
    <message>
        <source>HOST_NO_INTERFACE</source>
        <translation>Sin interfaz</translation>
    </message>
    <message>
        <source>HOST_CONNECTED</source>
        <translation>Conectado</translation>
    </message>
    <message>
        <source>HOST_NOT_CONNECTED</source>
        <translation>Sin conexión</translation>
    </message>
    <message>
        <source>HOST_DEMO</source>
        <translation>Demostración</translation>
    </message>
    <message>
        <source>HOST_NO_PLUGIN</source>
        <translation>No hay ningún complemento cargado; no hay nada que mostrar.</translation>
    </message>
    <message>
        <source>HOST_NO_DATA_FOLDER</source>
        <translation>No se puede crear la carpeta de datos %1; no se recordará nada.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FAILURE</source>
        <translation>Complemento %1: %2</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_FOLDER</source>
        <translation>Esa carpeta no existe.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOLDER_EMPTY</source>
        <translation>La carpeta no contiene complementos.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_LIBRARY</source>
        <translation>La carpeta no contiene ninguna biblioteca.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_LOADED</source>
        <translation>No se puede cargar: %1</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_FOREIGN</source>
        <translation>No es un complemento de este programa.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_READABLE</source>
        <translation>El archivo está vacío o no se puede leer.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_WRONG_QT</source>
        <translation>Se compiló para Qt %1, pero este programa usa Qt %2.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_TWICE</source>
        <translation>Su identificador ya pertenece a %1.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NOT_STARTED</source>
        <translation>No se ha iniciado.</translation>
    </message>
    <message>
        <source>HOST_PLUGIN_NO_STATISTICS</source>
        <translation>No tiene página de estadísticas.</translation>
    </message>
</context>
</TS>
