<?xml version="1.0" encoding="utf-8"?>
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="utf-8"/>
  <xsl:param name="most" select="50"/>

  <xsl:template match="/seeds">
    <div class="table" tabindex="0" role="region" aria-label="Seed list">
    <table>
      <caption>Seed list of <xsl:value-of select="@year"/></caption>
      <thead>
        <tr><th scope="col">Number</th><th scope="col">Species</th><th scope="col">Collected at</th><th scope="col">Portions</th></tr>
      </thead>
      <tbody>
        <xsl:for-each select="seed">
          <xsl:sort select="name"/>
          <xsl:if test="position() &lt;= $most">
            <tr>
              <td><xsl:value-of select="@number"/></td>
              <td><i><xsl:value-of select="name"/></i></td>
              <td><xsl:value-of select="place"/></td>
              <td><xsl:value-of select="portions"/></td>
            </tr>
          </xsl:if>
        </xsl:for-each>
      </tbody>
    </table>
    </div>
  </xsl:template>
</xsl:stylesheet>
